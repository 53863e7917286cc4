#pragma once

#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>

namespace TranslationChecker {

// The bytes of a file; null when it cannot be read or is a directory.
inline std::optional<std::string> ReadFile(std::filesystem::path const& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    // An empty file only makes the copy fail; a read that fails half-way leaves `file` bad.
    std::ostringstream contents;
    contents << file.rdbuf();
    if (file.bad()) return std::nullopt;
    return contents.str();
}

} // namespace TranslationChecker
