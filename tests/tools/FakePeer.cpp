#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <unistd.h>

// A process at the other end of the pipes that does what its arguments say, one after the other:
//   frame TEXT      write TEXT as a frame        raw TEXT    write TEXT as it is
//   length N        write N as a frame's length  env NAME    write a variable's value, or "unset", as a frame
//   sleep MS        wait                         read        read a frame
//   echo            write back every frame until the input ends, then go on
//   echo-size       write the size of the next frame, as a frame
//   input-end       read until the input ends    close-output
//   exit STATUS     kill SIGNAL                  raise it, with its default action
// It exits with 9 when it is given anything else, and with 8 when a frame is wanted and the input ends.

namespace {

void WriteAll(std::string_view bytes) {
    while (!bytes.empty()) {
        ssize_t const count = write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (count <= 0) _exit(7);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void WriteLength(std::uint32_t length) {
    std::array<char, sizeof length> bytes{};
    std::memcpy(bytes.data(), &length, sizeof length);
    WriteAll({bytes.data(), bytes.size()});
}

void WriteFrame(std::string_view text) {
    WriteLength(static_cast<std::uint32_t>(text.size()));
    WriteAll(text);
}

bool ReadAll(char* to, std::size_t size) {
    while (size > 0) {
        ssize_t const count = read(STDIN_FILENO, to, size);
        if (count <= 0) return false;
        to += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool ReadFrame(std::string& text) {
    std::array<char, sizeof(std::uint32_t)> bytes{};
    if (!ReadAll(bytes.data(), bytes.size())) return false;
    std::uint32_t length = 0;
    std::memcpy(&length, bytes.data(), sizeof length);
    text.resize(length);
    return ReadAll(text.data(), length);
}

std::string WantedFrame() {
    std::string text;
    if (!ReadFrame(text)) _exit(8);
    return text;
}

// Commands without an argument; false when `command` is none.
bool DoSimple(std::string_view command) {
    if (command == "read") {
        WantedFrame();
    } else if (command == "echo") {
        for (std::string text; ReadFrame(text);) WriteFrame(text);
    } else if (command == "echo-size") {
        WriteFrame("<R><Size><Bytes>" + std::to_string(WantedFrame().size()) + "</Bytes></Size></R>");
    } else if (command == "input-end") {
        for (char c = 0; ReadAll(&c, 1);) {
        }
    } else if (command == "close-output") {
        close(STDOUT_FILENO);
    } else {
        return false;
    }
    return true;
}

void DoWithArgument(std::string_view command, char const* argument) {
    if (command == "frame")
        WriteFrame(argument);
    else if (command == "raw")
        WriteAll(argument);
    else if (command == "length")
        WriteLength(static_cast<std::uint32_t>(std::strtoul(argument, nullptr, 10)));
    else if (command == "sleep")
        usleep(static_cast<useconds_t>(std::atoi(argument)) * 1000);
    else if (command == "exit")
        _exit(std::atoi(argument));
    else if (command == "kill")
        raise(std::atoi(argument));
    else if (command == "env") {
        char const* const value = std::getenv(argument);
        WriteFrame("<R><Env><Value>" + std::string(value != nullptr ? value : "unset") +
                   "</Value></Env></R>");
    } else
        _exit(9);
}

} // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (DoSimple(argv[i])) continue;
        if (i + 1 == argc) return 9;
        DoWithArgument(argv[i], argv[i + 1]);
        ++i;
    }
    return 0;
}
