#pragma once

#include "text/UStringBuilder.h"

// Conversion between the Unicode encodings as a stream: receives text of `From` in pieces of any size and
// hands it on as text of `To`, in pieces of at most 4096 bytes. Where the pieces are cut makes no difference
// to the text that comes out: a character that is cut waits for its rest. Nothing is replaced or left out.
// What is no text of `From` raises InvalidTextEncoding, after which the transcoder is not to be used again;
// so does what the target throws. The transcoder itself allocates nothing.
//
// These pairs are there:
//   <UTF8, UTF16>, <UTF16, UTF8>, <UTF8, UTF32>, <UTF32, UTF8>, <UTF16, UTF32>, <UTF32, UTF16>,
//   <UTF8, USAscii>
//
// What is refused, and what is not:
//
// - From UTF-8, a lead byte other than 0xxxxxxx, 110xxxxx, 1110xxxx and 11110xxx is refused, and so is every
//   continuation byte other than 10xxxxxx. A form longer than its value needs is taken at that value. To
//   UTF-32, every value that a form can express is passed on, up to 0x1FFFFF and the surrogates too. To
//   UTF-16, what it cannot hold is refused: the surrogates D800 to DFFF and values above 0x10FFFF.
// - From UTF-16, a surrogate without its other half is refused.
// - From UTF-32, surrogates and values above 0x10FFFF are refused.
// - From 7-bit text, bytes above 0x7F are refused.
template <class To, class From>
class GenericTranscoder : public UTextReceiver<From> {
public:
    using Unit = typename From::Unit;

    // `target` must outlive the transcoder.
    explicit GenericTranscoder(UTextReceiver<To>& target) : m_target(target) {}

    // Begins a text; what was left of an earlier one that was given up is forgotten.
    void Start(From encoding) override;
    void Receive(ConstArrayOf<Unit> units) override;
    // Throws InvalidTextEncoding when the text ends within a character.
    void ReceiveEnd() override;

private:
    class Block;

    void TakeUnit(Unit unit, Block& block);

    static constexpr std::size_t carryCapacity = 3;

    UTextReceiver<To>& m_target;
    // The units of a character whose rest is still to come.
    std::size_t m_carried = 0;
    Unit m_carry[carryCapacity] = {};
};

extern template class GenericTranscoder<UTF8, UTF16>;
extern template class GenericTranscoder<UTF8, UTF32>;
extern template class GenericTranscoder<UTF16, UTF8>;
extern template class GenericTranscoder<UTF16, UTF32>;
extern template class GenericTranscoder<UTF32, UTF8>;
extern template class GenericTranscoder<UTF32, UTF16>;
extern template class GenericTranscoder<UTF8, USAscii>;

// How many units of `To` the text makes, in one pass that checks nothing: exact for a text that is well
// formed, never more than four times the units of the text for any other.
template <class To, class From>
std::size_t TranscodedSize(UStringRef<From> text);

extern template std::size_t TranscodedSize<UTF8, UTF16>(UStringRef<UTF16>);
extern template std::size_t TranscodedSize<UTF8, UTF32>(UStringRef<UTF32>);
extern template std::size_t TranscodedSize<UTF16, UTF8>(UStringRef<UTF8>);
extern template std::size_t TranscodedSize<UTF16, UTF32>(UStringRef<UTF32>);
extern template std::size_t TranscodedSize<UTF32, UTF8>(UStringRef<UTF8>);
extern template std::size_t TranscodedSize<UTF32, UTF16>(UStringRef<UTF16>);
extern template std::size_t TranscodedSize<UTF8, USAscii>(UStringRef<USAscii>);

// The whole of a text in another encoding: Transcode<UTF16>("Gr\xC3\xBC"_utf8). Throws InvalidTextEncoding
// for what the transcoder refuses and for a text that ends within a character.
template <class To, class From>
AutoUString<To> Transcode(UStringRef<From> text) {
    UStringBuilder<To> builder(TranscodedSize<To, From>(text));
    GenericTranscoder<To, From> transcoder(builder);
    transcoder.Start(text.Encoding());
    transcoder.Receive(text);
    transcoder.ReceiveEnd();
    return builder.Take();
}
