#pragma once

#include "text/CopiedUString.h"

#include <cstdint>
#include <utility>

// One message of the client link: the whole XML document of a frame, in either direction.
struct UIMessage {
    UIMessage() = default;
    // Copies the document.
    explicit UIMessage(UStringRef<UTF8> const& document) : text(document) {}
    // Takes the document.
    explicit UIMessage(AutoUString<UTF8>&& document) noexcept : text(std::move(document)) {}

    // Always 0. It is copied along, never looked at, and does not travel on the pipe.
    std::uint32_t kind = 0;
    // Not checked to be valid UTF-8 when it comes from the pipe.
    CopiedUString<UTF8> text;
};
