#include "format/FormatOverrideContext.h"

#include <cstddef>
#include <new>

namespace {

// A plain pointer, so that what it owns is never destroyed at exit.
FormatOverrideContext* customContext = nullptr;

} // namespace

FormatOverrideContext::~FormatOverrideContext() = default;

bool FormatOverrideContext::HasOverride(UStringRef<UTF8> const& key) const {
    return Find(key) != nullptr;
}

UStringRef<UTF8> FormatOverrideContext::Override(UStringRef<UTF8> const& key,
                                                 UStringRef<UTF8> const& defaultText) const {
    FormatOverride const* const found = Find(key);
    return found ? found->second : defaultText;
}

UStringRef<UTF8> FormatOverrideContext::Override(UStringRef<UTF8> const& key) const {
    return Override(key, key);
}

void FormatOverrideContext::AddLanguage(ListLink<FormatOverrideSet const>& link) {
    m_sets.Add(link, BeforeStart());
}

void FormatOverrideContext::RemoveLanguage(ListLink<FormatOverrideSet const>& link) {
    m_sets.Remove(link);
}

bool FormatOverrideContext::isCustom() {
    return false;
}

std::unique_ptr<FormatOverrideContext> FormatOverrideContext::CreateNewInstance() const {
    return std::make_unique<FormatOverrideContext>();
}

// The list is only followed: a registered walk would change it, and lookups may run on several threads.
FormatOverride const* FormatOverrideContext::Find(UStringRef<UTF8> const& key) const {
    for (ListNode const* node = m_sets.First(); node; node = node->Next()) {
        auto const* const link = static_cast<ListLink<FormatOverrideSet const> const*>(node);
        if (FormatOverride const* const found = link->Object().Find(key)) return found;
    }
    return nullptr;
}

FormatOverrideContext& GlobalFormatOverrideContext() {
    if (customContext) return *customContext;
    // In memory of its own, so that a text costs the heap nothing but itself.
    alignas(FormatOverrideContext) static std::byte memory[sizeof(FormatOverrideContext)];
    static FormatOverrideContext& ofTheProcess = *new (memory) FormatOverrideContext;
    return ofTheProcess;
}

void SetCustomFormatOverrideContext(std::unique_ptr<FormatOverrideContext> context) {
    std::unique_ptr<FormatOverrideContext> const earlier(customContext);
    customContext = context.release();
}

FormatOverrideContext* GetCustomFormatOverrideContext() {
    return customContext;
}
