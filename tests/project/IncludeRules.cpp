#include "tests/project/IncludeRules.h"

#include <fnmatch.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>

namespace vesk {
namespace {

bool Matches(const std::string& pattern, const std::string& text) {
    return fnmatch(pattern.c_str(), text.c_str(), 0) == 0;
}

// A folder stands for everything in it.
std::string PatternOf(const std::string& cell) {
    return cell.ends_with('/') ? cell + '*' : cell;
}

std::string FolderOf(const std::string& file) {
    return file.substr(0, file.find('/') + 1);
}

std::string InnerOf(const std::string& target) {
    return target.substr(1, target.size() - 2);
}

bool IsLibrary(const std::string& target) {
    return target.starts_with('<');
}

// The last row that speaks of a file decides: rows for a part of a folder follow the folder's.
const FolderRow* RowOf(const std::vector<FolderRow>& rows, const std::string& file) {
    const auto row = std::find_if(rows.rbegin(), rows.rend(),
                                  [&](const FolderRow& r) { return Matches(r.m_Files, file); });
    return row == rows.rend() ? nullptr : &*row;
}

bool Lists(const FolderRow& row, const std::string& target) {
    const std::string name = IsLibrary(target) ? target : InnerOf(target);
    return std::any_of(row.m_MayInclude.begin(), row.m_MayInclude.end(),
                       [&](const std::string& pattern) { return Matches(pattern, name); });
}

bool MayInclude(const std::vector<FolderRow>& rows, const FolderRow& row,
                const IncludeLine& include) {
    if (Lists(row, include.m_Target)) return true;
    if (!IsLibrary(include.m_Target)) {
        const FolderRow* target = RowOf(rows, InnerOf(include.m_Target));
        return target == &row;
    }
    // Libraries that no row restricts, the standard library above all, are open to every folder.
    return std::none_of(rows.begin(), rows.end(), [&](const FolderRow& other) {
        const bool listsAll = std::count(other.m_MayInclude.begin(), other.m_MayInclude.end(), "*");
        return !listsAll && Lists(other, include.m_Target);
    });
}

std::string Located(const IncludeLine& include, const std::string& fault) {
    return include.m_File + ":" + std::to_string(include.m_Line) + ": " + include.m_Target + " " +
           fault;
}

// What an #include line includes, with its quotes or brackets; empty for any other line.
std::string TargetOf(const std::string& line) {
    std::istringstream words(line);
    std::string word;
    words >> word;
    if (word == "#") {
        words >> word;
        word = "#" + word;
    }
    if (!word.starts_with("#include")) return "";
    const std::size_t begin = line.find_first_of("\"<");
    if (begin == std::string::npos) return "";
    const std::size_t end = line.find(line[begin] == '<' ? '>' : '"', begin + 1);
    return end == std::string::npos ? "" : line.substr(begin, end + 1 - begin);
}

void ReadIncludes(const std::filesystem::path& path, const std::string& file, SourceTree& tree) {
    std::ifstream stream(path);
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        const std::string target = TargetOf(line);
        if (!target.empty()) tree.m_Includes.push_back({file, number, target});
    }
}

// The texts between pairs of backquotes.
std::vector<std::string> CodeIn(const std::string& text) {
    std::vector<std::string> codes;
    std::size_t begin = 0;
    while ((begin = text.find('`', begin)) != std::string::npos) {
        const std::size_t end = text.find('`', begin + 1);
        if (end == std::string::npos) break;
        codes.push_back(text.substr(begin + 1, end - begin - 1));
        begin = end + 1;
    }
    return codes;
}

}  // namespace

std::vector<FolderRow> ParseFolderTable(const std::string& markdown) {
    std::vector<FolderRow> rows;
    std::istringstream stream(markdown);
    for (std::string line; std::getline(stream, line);) {
        if (!line.starts_with("| `") || !line.ends_with('|')) continue;
        FolderRow& row = rows.emplace_back(FolderRow{PatternOf(CodeIn(line).at(0)), {}});
        const std::size_t lastCell = line.rfind('|', line.size() - 2);
        for (const std::string& code : CodeIn(line.substr(lastCell))) {
            row.m_MayInclude.push_back(PatternOf(code));
        }
    }
    return rows;
}

SourceTree ReadSourceTree(const std::filesystem::path& root) {
    static const std::set<std::string> kExtensions = {".h", ".hpp", ".c", ".cpp"};
    SourceTree tree;
    std::filesystem::recursive_directory_iterator it(root), end;
    for (; it != end; ++it) {
        const std::string name = it->path().filename().string();
        if (it->is_directory() && (name.starts_with('.') || name == "build" || name == "out")) {
            it.disable_recursion_pending();
        }
        if (!it->is_regular_file() || !kExtensions.contains(it->path().extension())) continue;
        const std::string file = it->path().lexically_relative(root).generic_string();
        tree.m_Files.push_back(file);
        ReadIncludes(it->path(), file, tree);
    }
    return tree;
}

std::vector<std::string> FindForbiddenIncludes(const std::vector<FolderRow>& rows,
                                               const SourceTree& tree) {
    std::vector<std::string> faults;
    for (const std::string& file : tree.m_Files) {
        if (!RowOf(rows, file)) faults.push_back(file + ": stands in no row of the folder table");
    }
    const std::set<std::string> files(tree.m_Files.begin(), tree.m_Files.end());
    for (const IncludeLine& include : tree.m_Includes) {
        const FolderRow* row = RowOf(rows, include.m_File);
        if (!row) continue;
        if (!IsLibrary(include.m_Target) && !files.contains(InnerOf(include.m_Target))) {
            faults.push_back(Located(include, "is no file, as seen from the root of the tree"));
        } else if (!MayInclude(rows, *row, include)) {
            faults.push_back(Located(include, "must not be included by " + row->m_Files));
        }
    }
    return faults;
}

std::vector<std::string> FindRowsThatPointUp(const std::vector<FolderRow>& rows) {
    std::vector<std::string> faults;
    std::set<std::string> below;
    for (const FolderRow& row : rows) {
        below.insert(FolderOf(row.m_Files));
        for (const std::string& target : row.m_MayInclude) {
            if (IsLibrary(target) || target == "*" || below.contains(FolderOf(target))) continue;
            faults.push_back(row.m_Files + " may include " + target + ", which stands below it");
        }
    }
    return faults;
}

std::vector<std::string> FindCycles(const SourceTree& tree) {
    std::map<std::string, std::vector<std::string>> targets;
    for (const IncludeLine& include : tree.m_Includes) {
        if (!IsLibrary(include.m_Target)) {
            targets[include.m_File].push_back(InnerOf(include.m_Target));
        }
    }
    std::vector<std::string> cycles;
    std::vector<std::string> path;
    std::set<std::string> done;
    const std::function<void(const std::string&)> visit = [&](const std::string& file) {
        const auto seen = std::find(path.begin(), path.end(), file);
        if (seen != path.end()) {
            std::string cycle;
            for (auto it = seen; it != path.end(); ++it) cycle += *it + " -> ";
            cycles.push_back(cycle + file);
        } else if (!done.contains(file)) {
            path.push_back(file);
            for (const std::string& target : targets[file]) visit(target);
            path.pop_back();
            done.insert(file);
        }
    };
    for (const std::string& file : tree.m_Files) visit(file);
    return cycles;
}

}  // namespace vesk
