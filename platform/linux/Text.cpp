#include "platform/Text.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace platform {

namespace {

struct CloseText {
    void operator()(UText* const text) const { utext_close(text); }
};

/// Calls `visit` with each scalar of `text`, its start, and its end. Invalid UTF-8 gives replacement characters.
template <typename Visit>
void forEachScalar(const std::string_view text, const Visit visit) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UText, CloseText> reader{
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status)};
    std::size_t at = 0;
    for (auto scalar = utext_next32(reader.get()); scalar != U_SENTINEL; scalar = utext_next32(reader.get())) {
        const auto next = static_cast<std::size_t>(utext_getNativeIndex(reader.get()));
        visit(scalar, at, next);
        at = next;
    }
}

bool isAlphanumeric(const UChar32 scalar) {
    constexpr std::uint32_t wanted = U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK;
    return (U_GET_GC_MASK(scalar) & wanted) != 0;
}

bool isAscii(const std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](const char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

/// In ASCII, only CR LF is a character of more than one byte.
std::size_t asciiCharacterCount(const std::string_view text) {
    std::size_t count = text.size();
    for (auto at = text.find("\r\n"); at != std::string_view::npos; at = text.find("\r\n", at + 2))
        --count;
    return count;
}

/// Each invalid byte becomes a replacement character.
icu::UnicodeString decoded(const std::string_view text) {
    constexpr UChar32 replacement = 0xFFFD;
    constexpr std::string_view encodedReplacement = "\xEF\xBF\xBD";
    icu::UnicodeString characters;
    forEachScalar(text, [&](const UChar32 scalar, const std::size_t at, const std::size_t next) {
        const bool isInvalid = scalar == replacement && text.substr(at, next - at) != encodedReplacement;
        for (std::size_t count = isInvalid ? next - at : 1; count > 0; --count)
            characters.append(scalar);
    });
    return characters;
}

} // namespace

std::string_view trimmedToAlphanumerics(const std::string_view text) {
    std::size_t first = text.size();
    std::size_t end = first;
    forEachScalar(text, [&](const UChar32 scalar, const std::size_t at, const std::size_t next) {
        if (!isAlphanumeric(scalar)) return;
        first = std::min(first, at);
        end = next;
    });
    return text.substr(first, end - first);
}

std::size_t characterCount(const std::string_view text) {
    // Most texts are ASCII, and ICU's rules take a megabyte of memory.
    if (isAscii(text)) return asciiCharacterCount(text);
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
