#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vesk {

// One row of the folder table: which files it speaks of, and what they may include. Patterns are
// those of a shell; a library's pattern stands in angle brackets.
struct FolderRow {
    std::string m_Files;
    std::vector<std::string> m_MayInclude;
};

// One #include line. The target is written as in the source, quotes or angle brackets included.
struct IncludeLine {
    std::string m_File;  // from the root of the tree
    int m_Line;
    std::string m_Target;
};

struct SourceTree {
    std::vector<std::string> m_Files;  // from the root of the tree
    std::vector<IncludeLine> m_Includes;
};

// The rows of the table in a Markdown text whose first cell is a path in backquotes.
std::vector<FolderRow> ParseFolderTable(const std::string& markdown);

// All C and C++ files below a root, hidden folders and "build" apart.
SourceTree ReadSourceTree(const std::filesystem::path& root);

// Lines for a person, one per fault, empty if there is none.
std::vector<std::string> FindForbiddenIncludes(const std::vector<FolderRow>&, const SourceTree&);
std::vector<std::string> FindRowsThatPointUp(const std::vector<FolderRow>&);
std::vector<std::string> FindCycles(const SourceTree&);

}  // namespace vesk
