#pragma once

#include "tools/screen-user/Widget.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The messages of the Editres protocol as bytes. All numbers travel with their highest byte first, texts and
// lists behind a 16-bit count.
namespace ScreenUser::Editres {

// Requests, ready to be sent; `serial` comes back in the answer.
std::string MakeTreeRequest(std::uint8_t serial);
std::string MakeResourcesRequest(std::uint8_t serial, Identity const& widget);
std::string MakeValueRequest(std::uint8_t serial, Identity const& widget, std::string_view resource);

// All readers throw UserError for bytes that are no such answer, and RefusedError for one in which the
// program refuses.

// Takes an answer's envelope off. Null when it is the answer to another request.
std::optional<std::string_view> OpenAnswer(std::string_view answer, std::uint8_t serial);
// The widgets without what only the display knows: their places, and whether they are mapped.
WidgetTree ReadTree(std::string_view content);
std::vector<ResourceName> ReadResources(std::string_view content);
// Null for a resource without a text.
std::optional<std::string> ReadValue(std::string_view content);

} // namespace ScreenUser::Editres
