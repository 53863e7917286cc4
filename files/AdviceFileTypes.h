#pragma once

#include "text/UStringRef.h"

#include <cstdint>

// Kinds of files in the agent's store.
enum class VarnikFileType : std::uint32_t {
    Masthead,
    Pool,
    Advice,
    HTML,
    Text,
    Log,
    BackLog,
    Inspector,
    Notation,
    Site,
    Preferences,
    Profile,
    Miscellany, // any other
};

// The kinds by name, and the extensions by which they are told apart. An extension includes its dot.
class AdviceFileTypes {
public:
    static constexpr VarnikFileType Masthead() { return VarnikFileType::Masthead; }
    static constexpr VarnikFileType Pool() { return VarnikFileType::Pool; }
    static constexpr VarnikFileType Advice() { return VarnikFileType::Advice; }
    static constexpr VarnikFileType HTML() { return VarnikFileType::HTML; }
    static constexpr VarnikFileType Text() { return VarnikFileType::Text; }
    static constexpr VarnikFileType Log() { return VarnikFileType::Log; }
    static constexpr VarnikFileType BackLog() { return VarnikFileType::BackLog; }
    static constexpr VarnikFileType Inspector() { return VarnikFileType::Inspector; }
    static constexpr VarnikFileType Notation() { return VarnikFileType::Notation; }
    static constexpr VarnikFileType Site() { return VarnikFileType::Site; }
    static constexpr VarnikFileType Preferences() { return VarnikFileType::Preferences; }
    static constexpr VarnikFileType Profile() { return VarnikFileType::Profile; }
    static constexpr VarnikFileType Miscellany() { return VarnikFileType::Miscellany; }

    // ".txt" for Text; the empty text for Miscellany and for a value that is no kind. The view lives for
    // ever.
    static UStringRef<UTF8> ExtensionOfType(VarnikFileType type);
    // The kind that has the extension, whose case makes no difference; Miscellany when none has.
    static VarnikFileType TypeOfExtension(UStringRef<UTF8> const& extension);
};
