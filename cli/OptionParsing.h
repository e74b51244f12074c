#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace vesk {

// An option whose text a parser turns into an optional value; none of it is a usage error.
template <class Value, class Parser>
CLI::Option* OfferParsed(CLI::App& app, const std::string& name, Value& value, Parser parse,
                         const std::string& help) {
    return app.add_option_function<std::string>(
        name,
        [=, &value](const std::string& text) {
            const auto parsed = parse(text);
            if (!parsed) throw CLI::ValidationError(name, "cannot use \"" + text + "\"");
            value = *parsed;
        },
        help);
}

}  // namespace vesk
