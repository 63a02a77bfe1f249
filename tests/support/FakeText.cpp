#include "platform/Text.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>

#include <memory>

// Unicode without a window system, from ICU. Nothing here is recorded or set by a test.

namespace platform {

namespace {

struct CloseText {
    void operator()(UText* const text) const { utext_close(text); }
};

/// ICU reads one replacement character for a sequence that ends too early; here each of its bytes counts.
icu::UnicodeString decoded(const std::string_view text) {
    constexpr UChar32 replacement = 0xFFFD;
    constexpr std::string_view encodedReplacement = "\xEF\xBF\xBD";
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UText, CloseText> reader{
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status)};
    icu::UnicodeString characters;
    std::size_t at = 0;
    for (auto scalar = utext_next32(reader.get()); scalar != U_SENTINEL; scalar = utext_next32(reader.get())) {
        const auto next = static_cast<std::size_t>(utext_getNativeIndex(reader.get()));
        const bool isInvalid = scalar == replacement && text.substr(at, next - at) != encodedReplacement;
        for (std::size_t count = isInvalid ? next - at : 1; count > 0; --count)
            characters.append(scalar);
        at = next;
    }
    return characters;
}

} // namespace

bool isAlphanumeric(const char32_t scalar) {
    constexpr std::uint32_t wanted = U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK;
    return scalar <= UCHAR_MAX_VALUE && (U_GET_GC_MASK(static_cast<UChar32>(scalar)) & wanted) != 0;
}

std::size_t characterCount(const std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters{
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status)};
    const auto decodedText = decoded(text);
    characters->setText(decodedText);
    std::size_t count = 0;
    while (characters->next() != icu::BreakIterator::DONE)
        ++count;
    return count;
}

} // namespace platform
