#include "database/ElfTargetLoader.h"

#include <dwarf.h>
#include <elfutils/libdw.h>
#include <elfutils/libdwfl.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>

// The debug information is a tree of entries (DIEs), one root per compilation unit. We visit
// every root's types, follow type names to what they stand for, and collect structures and
// enumerations; what a function declares for itself is left out. The file is opened offline as a
// module, because only then the library applies the relocations that an object file's debug
// sections need.
//
// Inside this file damage is an exception; none leaves it.

namespace vesk {

namespace {

constexpr int kMaxDepth = 32;  // nested scopes, members within members, type names
constexpr std::size_t kMaxEntries = std::size_t{1} << 23;  // fields and enumerators together

struct DamagedFile : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A size or offset that the database cannot hold; the structure is then left out.
struct TooLarge {};

[[noreturn]] void FailInDwarf() {
    const char* message = dwarf_errmsg(-1);
    throw DamagedFile(std::string("damaged debug information: ") +
                      (message ? message : "unknown error"));
}

template <class Visit>
void ForEachChild(Dwarf_Die parent, Visit visit) {
    Dwarf_Die child;
    int status = dwarf_child(&parent, &child);
    for (; status == 0; status = dwarf_siblingof(&child, &child)) visit(child);
    if (status < 0) FailInDwarf();
}

int IgnoreAttribute(Dwarf_Attribute*, void*) {
    return DWARF_CB_OK;
}

// Name of an entry, empty if it has none. A name that lies in the entry itself may lack its end
// in a damaged file; walking the attributes makes the library check that.
std::string NameOf(Dwarf_Die& die) {
    Dwarf_Attribute attribute;
    if (!dwarf_attr(&die, DW_AT_name, &attribute)) return {};
    if (dwarf_whatform(&attribute) == DW_FORM_string &&
        dwarf_getattrs(&die, IgnoreAttribute, nullptr, 0) < 0)
        FailInDwarf();
    const char* name = dwarf_formstring(&attribute);
    if (!name) FailInDwarf();
    return name;
}

bool Has(Dwarf_Die& die, unsigned attribute) {
    return dwarf_hasattr(&die, attribute) != 0;
}

Dwarf_Word Number(Dwarf_Die& die, unsigned name, Dwarf_Word fallback) {
    Dwarf_Attribute attribute;
    Dwarf_Word value = 0;
    const bool read =
        dwarf_attr(&die, name, &attribute) && dwarf_formudata(&attribute, &value) == 0;
    return read ? value : fallback;
}

bool GoToType(Dwarf_Die& die) {
    Dwarf_Attribute attribute;
    return dwarf_attr(&die, DW_AT_type, &attribute) && dwarf_formref_die(&attribute, &die);
}

// Follows type names and qualifiers to the type itself. False if there is none, as for void.
bool GoToPlainType(Dwarf_Die& die) {
    for (int steps = 0; steps < kMaxDepth; ++steps) {
        switch (dwarf_tag(&die)) {
            case DW_TAG_typedef:
            case DW_TAG_const_type:
            case DW_TAG_volatile_type:
            case DW_TAG_atomic_type:
                if (!GoToType(die)) return false;
                break;
            default:
                return true;
        }
    }
    return false;
}

bool IsAggregate(Dwarf_Die& die) {
    const int tag = dwarf_tag(&die);
    return tag == DW_TAG_structure_type || tag == DW_TAG_class_type || tag == DW_TAG_union_type;
}

std::int32_t AsBytes(Dwarf_Word value) {
    if (value > INT32_MAX) throw TooLarge();
    return static_cast<std::int32_t>(value);
}

// Bytes of a member's type, those of all elements for an array. An array without a bound has 0.
Dwarf_Word SizeOfType(Dwarf_Die member) {
    Dwarf_Word size = 0;
    return GoToType(member) && dwarf_aggregate_size(&member, &size) == 0 ? size : 0;
}

// Bytes from the start of the enclosing structure. The library turns a plain number into the
// operation that older formats write out.
Dwarf_Word OffsetOf(Dwarf_Die& member) {
    Dwarf_Attribute attribute;
    if (!dwarf_attr(&member, DW_AT_data_member_location, &attribute)) return 0;
    Dwarf_Op* operations = nullptr;
    std::size_t count = 0;
    if (dwarf_getlocation(&attribute, &operations, &count) != 0) FailInDwarf();
    return count == 1 && operations[0].atom == DW_OP_plus_uconst ? operations[0].number : 0;
}

// Enumerators are kept in 32 bits, which may stand for a signed or an unsigned number.
bool ReadValue(Dwarf_Die& enumerator, std::int32_t& value) {
    Dwarf_Attribute attribute;
    if (!dwarf_attr(&enumerator, DW_AT_const_value, &attribute)) return false;
    const unsigned form = dwarf_whatform(&attribute);
    Dwarf_Sword number = 0;
    Dwarf_Word bits = 0;
    if (form == DW_FORM_sdata || form == DW_FORM_implicit_const) {
        if (dwarf_formsdata(&attribute, &number) != 0) return false;
    } else {
        // Compilers write 200 into one byte, whatever the sign of the enumeration.
        if (dwarf_formudata(&attribute, &bits) != 0) return false;
        number = static_cast<Dwarf_Sword>(bits);
    }
    if (number < INT32_MIN || number > Dwarf_Sword{UINT32_MAX}) return false;
    value = static_cast<std::int32_t>(number);
    return true;
}

// Collects the named types of all units. Of several definitions of one name the first one counts.
class TypeCollector {
public:
    explicit TypeCollector(bool bigEndian) : m_BigEndian(bigEndian) {}

    void ReadUnits(Dwarf* dwarf) {
        Dwarf_CU* unit = nullptr;
        Dwarf_Die root;
        int status = 0;
        while ((status = dwarf_get_units(dwarf, unit, &unit, nullptr, nullptr, &root, nullptr)) ==
               0)
            ReadScope(root, "", 0);
        if (status < 0) FailInDwarf();
    }

    TargetDatabase m_Found;

private:
    void ReadScope(Dwarf_Die scope, const std::string& prefix, int depth) {
        if (depth > kMaxDepth) return;
        ForEachChild(scope, [&](Dwarf_Die& die) { ReadEntry(die, prefix, depth); });
    }

    void ReadEntry(Dwarf_Die die, const std::string& prefix, int depth) {
        const int tag = dwarf_tag(&die);
        const bool opensScope = tag == DW_TAG_namespace || IsAggregate(die);
        if (!opensScope && tag != DW_TAG_typedef && tag != DW_TAG_enumeration_type) return;
        const std::string name = NameOf(die);
        if (opensScope) ReadScope(die, name.empty() ? prefix : prefix + name + "::", depth + 1);
        if (!name.empty() && GoToPlainType(die)) AddType(prefix + name, die);
    }

    void AddType(const std::string& name, Dwarf_Die& type) {
        if (Has(type, DW_AT_declaration)) return;
        if (dwarf_tag(&type) == DW_TAG_enumeration_type)
            AddEnum(name, type);
        else if (IsAggregate(type) && Has(type, DW_AT_byte_size))
            AddFormat(name, type);
    }

    void AddEnum(const std::string& name, Dwarf_Die& type) {
        const auto [entry, added] = m_Found.m_Enums.try_emplace(name);
        if (!added) return;
        EnumContent& content = entry->second;
        const int width = dwarf_bytesize(&type);
        content.m_Width = width == 1 || width == 2 ? width : 4;
        ForEachChild(type, [&](Dwarf_Die& child) {
            std::int32_t value = 0;
            if (dwarf_tag(&child) != DW_TAG_enumerator || !ReadValue(child, value)) return;
            CountEntry();
            content.Add(NameOf(child), value);
        });
    }

    void AddFormat(const std::string& name, Dwarf_Die& type) {
        if (m_Found.m_Formats.contains(name)) return;
        try {
            DataFormat format;
            format.Size = AsBytes(Number(type, DW_AT_byte_size, 0));
            AddFields(type, 0, format, 0);
            m_Found.m_Formats.emplace(name, std::move(format));
        } catch (const TooLarge&) {
        }
    }

    void AddFields(Dwarf_Die& type, Dwarf_Word base, DataFormat& format, int depth) {
        if (depth > kMaxDepth) throw DamagedFile("a structure's members are nested too deeply");
        ForEachChild(type, [&](Dwarf_Die& child) {
            const int tag = dwarf_tag(&child);
            // A static member has no place in the structure.
            if (tag == DW_TAG_inheritance || (tag == DW_TAG_member && !Has(child, DW_AT_external)))
                AddMember(child, base, format, depth);
        });
    }

    // A member without a name, and a base class, stand for their own members: these are what
    // the code of the target calls by name.
    void AddMember(Dwarf_Die& member, Dwarf_Word base, DataFormat& format, int depth) {
        CountEntry();
        DataField field;
        field.m_Name = NameOf(member);
        if (field.m_Name.empty()) {
            Dwarf_Die type = member;
            if (GoToType(type) && GoToPlainType(type) && IsAggregate(type))
                AddFields(type, base + OffsetOf(member), format, depth + 1);
            return;
        }
        const auto [offset, size] = PlaceOf(member);
        field.Offset = AsBytes(base + offset);
        field.Size = AsBytes(size);
        format.m_Fields.push_back(std::move(field));
    }

    struct Place {
        Dwarf_Word m_Offset;
        Dwarf_Word m_Size;
    };

    // A bit field takes the bytes that its bits lie in. Older formats count its bits from the
    // most significant one of a storage unit, newer ones from the structure's start.
    Place PlaceOf(Dwarf_Die& member) const {
        const Dwarf_Word size = SizeOfType(member);
        const Dwarf_Word offset = OffsetOf(member);
        if (!Has(member, DW_AT_bit_size)) return {offset, size};
        const Dwarf_Word bits = Number(member, DW_AT_bit_size, 0);
        Dwarf_Word first = Number(member, DW_AT_data_bit_offset, 0);
        if (Has(member, DW_AT_bit_offset)) {
            const Dwarf_Word fromTop = Number(member, DW_AT_bit_offset, 0);
            const Dwarf_Word unitBits = 8 * Number(member, DW_AT_byte_size, size);
            first = 8 * offset + (m_BigEndian ? fromTop : unitBits - fromTop - bits);
        }
        return {first / 8, (first + bits + 7) / 8 - first / 8};
    }

    // Every name of a structure costs its fields again, so that a small file could ask for more
    // memory than there is.
    void CountEntry() {
        if (++m_Entries > kMaxEntries) throw DamagedFile("too many fields and enumerators");
    }

    bool m_BigEndian;
    std::size_t m_Entries = 0;
};

int FindNoElf(Dwfl_Module*, void**, const char*, Dwarf_Addr, char**, Elf**) {
    return -1;
}

// Debug information that lies elsewhere is not looked for: neither in the system's folders nor
// in the network.
int FindNoDebugFile(Dwfl_Module*, void**, const char*, Dwarf_Addr, const char*, const char*,
                    GElf_Word, char**) {
    return -1;
}

constexpr Dwfl_Callbacks kOffline = {FindNoElf, FindNoDebugFile, dwfl_offline_section_address,
                                     nullptr};

struct SessionEnder {
    void operator()(Dwfl* session) const { dwfl_end(session); }
};

// The bytes that open a file; the check keeps archives and packed files away from the library.
bool IsBigEndianElf(const std::string& path) {
    std::array<char, EI_NIDENT> identity{};
    std::ifstream file(path, std::ios::binary);
    if (!file || !std::filesystem::is_regular_file(path))
        throw DamagedFile("the file cannot be opened");
    if (!file.read(identity.data(), identity.size()) ||
        std::memcmp(identity.data(), ELFMAG, SELFMAG) != 0)
        throw DamagedFile("not an ELF file");
    return identity[EI_DATA] == ELFDATA2MSB;
}

[[noreturn]] void FailInFile(const char* what) {
    const char* message = dwfl_errmsg(-1);
    throw DamagedFile(what + std::string(": ") + (message ? message : "unknown error"));
}

TargetDatabase ReadElf(const std::string& path) {
    TypeCollector types(IsBigEndianElf(path));
    const std::unique_ptr<Dwfl, SessionEnder> session(dwfl_begin(&kOffline));
    if (!session) FailInFile("no session");
    Dwfl_Module* module = dwfl_report_offline(session.get(), "target", path.c_str(), -1);
    if (!module) FailInFile("damaged ELF file");
    dwfl_report_end(session.get(), nullptr, nullptr);
    Dwarf_Addr bias = 0;
    Dwarf* dwarf = dwfl_module_getdwarf(module, &bias);
    if (!dwarf) FailInFile("no debug information");
    types.ReadUnits(dwarf);
    if (types.m_Found.m_Formats.empty() && types.m_Found.m_Enums.empty())
        throw DamagedFile("the debug information names no structure and no enumeration");
    return std::move(types.m_Found);
}

}  // namespace

bool LoadTargetFromElf(const std::string& path, TargetDatabase& database, std::string& error) {
    try {
        TargetDatabase found = ReadElf(path);
        found.m_Formats.merge(database.m_Formats);
        found.m_Enums.merge(database.m_Enums);
        database.m_Formats = std::move(found.m_Formats);
        database.m_Enums = std::move(found.m_Enums);
        return true;
    } catch (const std::bad_alloc&) {
        error = path + ": out of memory";
    } catch (const std::exception& problem) {
        error = path + ": " + problem.what();
    }
    return false;
}

}  // namespace vesk
