#pragma once

#include "format/FormatOverrideContext.h"

// Puts a set of translations into force in a context, in front of those that are there, for as long as it
// lives. Both must outlive it: a scope goes before the file that its set belongs to.
class FormatOverrideScope {
public:
    FormatOverrideScope(FormatOverrideSet const& set, FormatOverrideContext& context);
    FormatOverrideScope(FormatOverrideSet const&& set, FormatOverrideContext& context) = delete;
    FormatOverrideScope(FormatOverrideScope const&) = delete;
    FormatOverrideScope& operator=(FormatOverrideScope const&) = delete;
    // Lookups fall back at once on what is behind the set.
    virtual ~FormatOverrideScope();

private:
    ListLink<FormatOverrideSet const> m_link;
    FormatOverrideContext* m_context;
};
