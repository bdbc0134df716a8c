#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What the program needs of the system and is not the same everywhere.
namespace Tool {

/// The program's arguments in UTF-8, without its name, given those of `main`.
std::vector<std::string> GetArguments(int argc, char** argv);

/// Has what is written arrive byte by byte as it is, and a terminal show it as UTF-8 with colours. Called
/// before anything is written.
void PrepareOutput();

bool IsTerminal(std::FILE* stream);

/// Columns of the terminal that a stream writes to; none where that is not known.
std::optional<std::size_t> GetTerminalWidth(std::FILE* stream);

/// Where this program's file lies; empty where that is not known.
std::filesystem::path GetProgramFolder();

} // namespace Tool
