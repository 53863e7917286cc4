#include "tests/support/SupportFiles.h"

std::string Base64(std::string const& bytes) {
    static char const digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve(bytes.size() / 3 * 4 + 4);
    unsigned int bits = 0;
    int count = 0;
    for (char const byte : bytes) {
        bits = bits << 8 | static_cast<unsigned char>(byte);
        for (count += 8; count >= 6; count -= 6) text += digits[bits >> (count - 6) & 63];
    }
    if (count > 0) text += digits[bits << (6 - count) & 63];
    return text;
}

std::string SupportFile(std::string const& name, std::string const& bytes) {
    return SupportFileWith(name, Base64(bytes));
}

std::string SupportFileWith(std::string const& name, std::string const& content, std::string const& fields) {
    return "<SupportFiles><FileName>" + name + "</FileName><Content>" + content + "</Content>" + fields +
           "</SupportFiles>";
}
