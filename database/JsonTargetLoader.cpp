#include "database/JsonTargetLoader.h"

#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

// A description is parsed whole, checked member by member and only then moved into the database.
// Inside this file a mistake is an exception that carries the path of the place; none leaves it.

namespace vesk {

namespace {

using nlohmann::json;

constexpr std::size_t kMaxBytes = std::size_t{16} << 20;
constexpr int kMaxDepth = 8;  // the deepest place of a good description has depth 5

[[noreturn]] void Fail(const std::string& where, const std::string& what) {
    throw std::runtime_error(where + ": " + what);
}

// The name with quotes and escapes, as it would stand in a description: safe to print.
std::string Quoted(const std::string& name) {
    return json(name).dump();
}

std::string Member(const std::string& where, const std::string& name) {
    const std::string quoted = Quoted(name);
    return (where.empty() ? "" : where + ".") + quoted.substr(1, quoted.size() - 2);
}

std::string Element(const std::string& where, std::size_t index) {
    return where + "[" + std::to_string(index) + "]";
}

// Watches a text while it is parsed. A key that comes again would silently replace the first one,
// and nesting without end would cost memory that no description needs.
class StructureGuard {
public:
    bool operator()(int depth, json::parse_event_t event, json& parsed) {
        if (depth > kMaxDepth) throw std::runtime_error("the values are nested too deeply");
        if (event == json::parse_event_t::object_start) m_Keys.emplace_back();
        if (event == json::parse_event_t::object_end) m_Keys.pop_back();
        if (event == json::parse_event_t::key) AddKey(parsed.get_ref<const std::string&>());
        return true;
    }

private:
    void AddKey(const std::string& key) {
        if (!m_Keys.back().insert(key).second)
            throw std::runtime_error("the key " + Quoted(key) + " stands twice in one object");
    }

    std::vector<std::set<std::string>> m_Keys;  // of the objects that are open
};

void CheckObject(const json& value, const std::string& where, const std::set<std::string>& keys) {
    if (!value.is_object()) Fail(where, "expected an object");
    for (const auto& [key, member] : value.items())
        if (!keys.contains(key)) Fail(where, "unknown key " + Quoted(key));
}

const json& Required(const json& object, const char* key, const std::string& where) {
    const auto found = object.find(key);
    if (found == object.end()) Fail(where, "the key \"" + std::string(key) + "\" is missing");
    return *found;
}

std::int64_t WholeNumber(const json& value, const std::string& where, std::int64_t lowest,
                         std::int64_t highest) {
    // The library keeps a number above the signed range as an unsigned one.
    const bool fits = value.is_number_integer() &&
                      (!value.is_number_unsigned() || value.get<std::uint64_t>() <= INT64_MAX);
    const std::int64_t number = fits ? value.get<std::int64_t>() : 0;
    if (!fits || number < lowest || number > highest)
        Fail(where, "expected a whole number from " + std::to_string(lowest) + " to " +
                        std::to_string(highest));
    return number;
}

std::int32_t ByteCount(const json& object, const char* key, const std::string& where) {
    const json& value = Required(object, key, where);
    return static_cast<std::int32_t>(WholeNumber(value, Member(where, key), 0, INT32_MAX));
}

const std::string& Name(const json& value, const std::string& where) {
    if (!value.is_string()) Fail(where, "expected a text");
    const auto& name = value.get_ref<const std::string&>();
    if (name.empty()) Fail(where, "expected a name, found an empty text");
    return name;
}

const json& Array(const json& value, const std::string& where) {
    if (!value.is_array()) Fail(where, "expected an array");
    return value;
}

int HexDigit(char digit, const std::string& where) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    Fail(where, "expected hexadecimal digits only");
}

TargetCapability ReadCapability(const json& value, const std::string& where) {
    TargetCapability capability;
    const std::size_t digits = 2 * capability.m_Bytes.size();
    if (!value.is_string() || value.get_ref<const std::string&>().size() != digits)
        Fail(where, "expected a text of " + std::to_string(digits) + " hexadecimal digits");
    const auto& text = value.get_ref<const std::string&>();
    for (std::size_t i = 0; i < capability.m_Bytes.size(); ++i)
        capability.m_Bytes[i] = static_cast<std::uint8_t>(HexDigit(text[2 * i], where) * 16 +
                                                          HexDigit(text[2 * i + 1], where));
    return capability;
}

DataField ReadField(const json& value, const std::string& where) {
    CheckObject(value, where, {"name", "offset", "size"});
    DataField field;
    field.m_Name = Name(Required(value, "name", where), Member(where, "name"));
    field.Offset = ByteCount(value, "offset", where);
    field.Size = ByteCount(value, "size", where);
    return field;
}

DataFormat ReadFormat(const json& value, const std::string& where) {
    CheckObject(value, where, {"size", "fields"});
    DataFormat format;
    format.Size = ByteCount(value, "size", where);
    const std::string fieldsAt = Member(where, "fields");
    const json& fields = Array(Required(value, "fields", where), fieldsAt);
    for (std::size_t i = 0; i < fields.size(); ++i)
        format.m_Fields.push_back(ReadField(fields[i], Element(fieldsAt, i)));
    return format;
}

// A value may be written signed or unsigned; the same 32 bits are the same value.
void ReadEnumerators(const json& pairs, const std::string& where, EnumContent& content) {
    Array(pairs, where);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const std::string at = Element(where, i);
        if (!pairs[i].is_array() || pairs[i].size() != 2)
            Fail(at, "expected a pair of enumerator and value");
        const std::int64_t value =
            WholeNumber(pairs[i][1], Element(at, 1), INT32_MIN, std::int64_t{UINT32_MAX});
        content.Add(Name(pairs[i][0], Element(at, 0)), static_cast<std::int32_t>(value));
    }
}

EnumContent ReadEnum(const json& value, const std::string& where) {
    EnumContent content;
    if (value.is_array()) {
        ReadEnumerators(value, where, content);
        return content;
    }
    CheckObject(value, where, {"width", "values"});
    content.m_Width = ByteCount(value, "width", where);
    if (content.m_Width != 1 && content.m_Width != 2 && content.m_Width != 4)
        Fail(Member(where, "width"), "expected 1, 2 or 4");
    ReadEnumerators(Required(value, "values", where), Member(where, "values"), content);
    return content;
}

// Reads the members of a section, which may be missing, into a map of their names.
template <class Map, class ReadMember>
void ReadSection(const json& description, const char* section, Map& map, ReadMember readMember) {
    const auto found = description.find(section);
    if (found == description.end()) return;
    const std::string where = Member("", section);
    if (!found->is_object()) Fail(where, "expected an object");
    for (const auto& [name, value] : found->items())
        map.insert_or_assign(name, readMember(value, Member(where, name)));
}

void ReadDescription(const std::string& text, TargetDatabase& database) {
    if (text.size() > kMaxBytes) throw std::runtime_error("the description is above 16 MiB");
    const json description = json::parse(text, StructureGuard());
    CheckObject(description, "description", {"capability", "structures", "enums"});
    if (description.contains("capability"))
        database.m_Capability = ReadCapability(description["capability"], "capability");
    ReadSection(description, "structures", database.m_Formats, ReadFormat);
    ReadSection(description, "enums", database.m_Enums, ReadEnum);
}

// The library opens its messages with a tag of its own in brackets.
std::string WithoutTag(const std::string& message) {
    const std::size_t end = message.find("] ");
    return message.starts_with('[') && end != std::string::npos ? message.substr(end + 2) : message;
}

// One byte more than allowed is enough to tell that there are too many.
std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("the file cannot be opened");
    std::string text;
    std::vector<char> block(std::size_t{1} << 16);
    while (text.size() <= kMaxBytes && file.read(block.data(), std::ssize(block)).gcount() > 0)
        text.append(block.data(), static_cast<std::size_t>(file.gcount()));
    if (file.bad()) throw std::runtime_error("the file cannot be read");
    return text;
}

// Runs a step that may throw on a copy of the database, and keeps the copy if it did not.
template <class Step>
bool Guarded(TargetDatabase& database, std::string& error, Step step) {
    try {
        TargetDatabase copy = database;
        step(copy);
        database = std::move(copy);
        return true;
    } catch (const std::bad_alloc&) {
        error = "out of memory";
    } catch (const std::exception& problem) {
        error = WithoutTag(problem.what());
    }
    return false;
}

}  // namespace

bool LoadTargetFromJson(const std::string& path, TargetDatabase& database, std::string& error) {
    const bool loaded = Guarded(
        database, error, [&path](TargetDatabase& copy) { ReadDescription(ReadText(path), copy); });
    if (!loaded) error = path + ": " + error;
    return loaded;
}

bool ParseTargetJson(const std::string& text, TargetDatabase& database, std::string& error) {
    return Guarded(database, error, [&text](TargetDatabase& copy) { ReadDescription(text, copy); });
}

}  // namespace vesk
