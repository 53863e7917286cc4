#pragma once

#include "format/FormatOverrideSet.h"
#include "foundation/List.h"

#include <memory>

// The sets of translations that are in force. A set is put into force by a FormatOverrideScope; the one that
// came last is asked first, so that its entries hide those of the others.
//
// A context has no lock. Any number of threads may look texts up at the same time, but none while a set comes
// or goes.
class FormatOverrideContext {
public:
    FormatOverrideContext() = default;
    FormatOverrideContext(FormatOverrideContext const&) = delete;
    FormatOverrideContext& operator=(FormatOverrideContext const&) = delete;
    // The scopes of a context must be gone before it.
    virtual ~FormatOverrideContext();

    // Whether any set in force has the key.
    virtual bool HasOverride(UStringRef<UTF8> const& key) const;
    // The text for the key in the first set that has it: a view into what that set was made from. Otherwise
    // the default, as it is.
    virtual UStringRef<UTF8> Override(UStringRef<UTF8> const& key, UStringRef<UTF8> const& defaultText) const;
    // The same with the key as the default.
    virtual UStringRef<UTF8> Override(UStringRef<UTF8> const& key) const;

    // Puts a set in front of the others, or takes it away, for scopes.
    virtual void AddLanguage(ListLink<FormatOverrideSet const>& link);
    virtual void RemoveLanguage(ListLink<FormatOverrideSet const>& link);

    // Whether it is of a class of its own, which does other things than this one.
    virtual bool isCustom();
    // An empty context of the same class.
    virtual std::unique_ptr<FormatOverrideContext> CreateNewInstance() const;

private:
    FormatOverride const* Find(UStringRef<UTF8> const& key) const;

    List m_sets;
};

// The context that UFormat asks: the custom one while one is set, otherwise one of the process, which is made
// on first use and never destroyed, since a thread may still make a text while the process exits.
FormatOverrideContext& GlobalFormatOverrideContext();

// Sets the custom context, or with null goes back to the one of the process. Destroys any earlier custom
// context, whose scopes must be gone; texts that it gave out end with it. Like the sets in a context, it must
// not change while another thread looks a text up.
void SetCustomFormatOverrideContext(std::unique_ptr<FormatOverrideContext> context);
// Null when none is set.
FormatOverrideContext* GetCustomFormatOverrideContext();
