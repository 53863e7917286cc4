#pragma once

#include "text/ICUResult.h"

#include <cstddef>
#include <cstdint>
#include <string>

// Outcome of a conversion by a CharacterSet: the status, and after a failure the piece of the input that
// could not be converted. Conversions leave the context empty; who hands a result on may say there what was
// being converted.
class CharacterSetResult : public ICUResult {
public:
    // Success.
    CharacterSetResult() = default;
    // An outcome without bad input.
    explicit CharacterSetResult(ICUResult const& result);
    // An outcome with `count` bytes of bad input, which are kept as they stand: in whatever encoding they
    // were given. The pointer may be null for a count of 0.
    CharacterSetResult(ICUResult const& result, char const* invalidBytes, std::size_t count);
    // An outcome with `count` UTF-16 units of bad input, which are kept as UTF-8; a surrogate without its
    // partner is kept as U+FFFD. The pointer may be null for a count of 0.
    CharacterSetResult(ICUResult const& result, std::uint16_t const* invalidUnits, std::size_t count);
    CharacterSetResult(CharacterSetResult const&) = default;
    CharacterSetResult& operator=(CharacterSetResult const&) = default;
    ~CharacterSetResult() override;

    char const* what() const noexcept override;

    std::string const& Context() const { return m_context; }
    void SetContext(std::string const& context) { m_context = context; }
    // The bad input; empty when there is none.
    std::string const& InvalidText() const { return m_invalidText; }

    // Of all there is: CharacterSetResult: context: UErrorCode=10 [U_INVALID_CHAR_FOUND] in ucnv_fromUChars
    // ["x"]. The context with its colon, and the bracket with the bad input, are there only when not empty.
    std::string MakeErrorMessage() const;

private:
    std::string m_context;
    std::string m_invalidText;
};
