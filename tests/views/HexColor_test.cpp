#include "views/HexColor.h"

#include "tests/support/SceneText.h"

namespace views {
namespace {

using platform::ui::Color;

Color onScale(const double red, const double green, const double blue, const double opacity = 255) {
    return {red / 255.0, green / 255.0, blue / 255.0, opacity / 255.0};
}

const Color fallback = onScale(1, 1, 0, 1);

/// A text, what is special about it, and the color read from it.
struct Reading {
    const char* text;
    const char* why;
    Color color;
};

const Color olive = onScale(182, 183, 126);
const Color blue = onScale(0, 0, 255);

const Reading readings[]{
    {"#B6B77E", "a hash sign", olive},
    {"B6B77E", "none", olive},
    {" \t#B6B77E \n", "spaces around", olive},
    {"abc", "three digits are doubled", onScale(170, 187, 204)},
    {"ABC", "digits of either case", onScale(170, 187, 204)},
    {"80FF0000", "of eight digits the opacity is first", onScale(255, 0, 0, 128)},
    {"GGGGGG", "six characters that are no digits", onScale(0, 0, 0)},
    {"0x123456", "a prefix counts, so that the digits are clear", onScale(0x12, 0x34, 0x56, 0)},
    {"0X123456", "the prefix in capitals", onScale(0x12, 0x34, 0x56, 0)},
    {"12345G", "the first character that is no digit ends them", onScale(0x1, 0x23, 0x45)},
    {"F\u00E9F", "the digits that there are, are the lowest", blue},
    {"0xF", "they are so behind a prefix", blue},
    {"FF-F00", "what is not alphanumeric stays inside", blue},
    {"abce\u0301f", "five characters of six scalars", fallback},
    {"abce\u0301fa", "six characters of seven scalars", onScale(0, 0xab, 0xce)},
    {"\u2014B6B77E\u2026", "what is not alphanumeric is trimmed in any script", olive},
    {"\U0001F3A8B6B77E\U0001F3A8", "and beyond the first plane", olive},
    {"B6B77E\u0301", "the mark belongs to the sixth character", olive},
    {"\u0301B6B77E", "a seventh character that is no digit", fallback},
    {"\xFF\xC3#B6B77E\x80", "bytes that are no text are trimmed", olive},
};

TEST(AHexadecimalColor, IsReadFromItsText) {
    for (const auto& [text, why, color] : readings)
        EXPECT_EQ(hexColor(text), color) << why;
}

TEST(AHexadecimalColor, IsAlmostBlackAndAlmostClearForAnyOtherLength) {
    for (const char* text : {"12345", "1234567", "", "#", "1", "12", "1234", "123456789"})
        EXPECT_EQ(hexColor(text), fallback) << text;
}

} // namespace
} // namespace views
