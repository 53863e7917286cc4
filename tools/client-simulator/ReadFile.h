#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace ClientSimulator {

// The bytes of a file; null when it cannot be read or is a directory.
std::optional<std::string> ReadFile(std::filesystem::path const& path);

} // namespace ClientSimulator
