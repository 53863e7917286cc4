#include "tools/client-simulator/ReadFile.h"

#include <fstream>
#include <sstream>

namespace ClientSimulator {

std::optional<std::string> ReadFile(std::filesystem::path const& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    // A read that fails half-way leaves `file` bad; an empty file only makes the copy fail.
    std::ostringstream text;
    text << file.rdbuf();
    if (file.bad()) return std::nullopt;
    return text.str();
}

} // namespace ClientSimulator
