#pragma once

#include <string>

// Files as a client puts them into its first message.

// The bytes as Base64 text, in one line and without padding.
std::string Base64(std::string const& bytes);
// The element of a file of these bytes. `name` is taken as it is, references included.
std::string SupportFile(std::string const& name, std::string const& bytes);
// The same with what is to stand in the element, and further elements behind it.
std::string SupportFileWith(std::string const& name, std::string const& content,
                            std::string const& fields = "");
