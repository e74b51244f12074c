#include "desktop/FileDialogFilter.h"

#include "desktop/QtText.h"

namespace vesk {

QStringList NameFilters(const CString& filter) {
    const QStringList parts = ToQt(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        if (parts[i].isEmpty() || parts[i + 1].isEmpty()) break;
        QStringList patterns = parts[i + 1].split(';', Qt::SkipEmptyParts);
        for (QString& pattern : patterns) {
            pattern = pattern.trimmed();
            // Here a file need not have a dot in its name.
            if (pattern == "*.*") pattern = "*";
        }
        const QString name = parts[i].section('(', 0, 0).trimmed();
        filters << name + " (" + patterns.join(' ') + ')';
    }
    return filters;
}

}  // namespace vesk
