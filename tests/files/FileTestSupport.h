#pragma once

#include "files/FileErrors.h"
#include "text/UString.h"

#include <cstdlib>
#include <cxxabi.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>

// "FileSeekError 22", "EndOfFileError 90": class and code of the file failure that `act` throws; the class
// alone of another failure of the program, and "nothing" when it throws nothing.
template <class Act>
std::string FailureOf(Act const& act) {
    auto const nameOf = [](DebuggableException const& failure) {
        std::unique_ptr<char, void (*)(void*)> const name(
            abi::__cxa_demangle(failure.DebuggableException::what(), nullptr, nullptr, nullptr), std::free);
        return std::string(name.get());
    };
    try {
        act();
    } catch (FileIOError const& failure) {
        return nameOf(failure) + " " + std::to_string(failure.GetCode());
    } catch (DebuggableException const& failure) {
        return nameOf(failure);
    }
    return "nothing";
}

// How many descriptors the process has open.
inline std::ptrdiff_t OpenDescriptors() {
    // One of them is the listing's own, in every count.
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

// What any other program reads from a file.
inline std::string FileContents(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}
