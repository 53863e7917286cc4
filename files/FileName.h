#pragma once

#include "text/CopiedUString.h"

// One component of a path, as text or, when it cannot be told as text, as bytes: one of the two is empty.
// A value of its own; no check is made of what it holds.
class FileName {
public:
    // The empty name.
    FileName() = default;
    explicit FileName(UStringRef<UTF8> const& text) : m_text(text) {}
    explicit FileName(UStringRef<Binary8Bit> const& bytes) : m_bytes(bytes) {}

    FileName(FileName const&) = default;
    FileName(FileName&&) noexcept = default;
    FileName& operator=(FileName const&) = default;
    FileName& operator=(FileName&&) noexcept = default;
    ~FileName() = default;

    // Views, valid until the name is changed or moved.
    UStringRef<UTF8> Text() const { return m_text.Ref(); }
    UStringRef<Binary8Bit> Bytes() const { return m_bytes.Ref(); }
    // The one that is in use; valid as they are.
    ConstData Raw() const { return m_bytes.empty() ? ConstData(m_text) : ConstData(m_bytes); }
    // Whether the name is held as bytes.
    bool IsBinary() const { return !m_bytes.empty(); }
    bool empty() const { return m_text.empty() && m_bytes.empty(); }

private:
    CopiedUString<UTF8> m_text;
    CopiedUString<Binary8Bit> m_bytes;
};

namespace UnixPlatform {

using FileName = ::FileName;

} // namespace UnixPlatform
