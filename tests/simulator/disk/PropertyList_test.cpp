#include "simulator/disk/PropertyList.h"

#include <cstdint>

namespace simulator {
namespace {

using testing::ElementsAre;

std::string bigEndian(std::uint64_t number, int size) {
    std::string bytes;
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift & 0xffU);
    return bytes;
}

/// A reference to a value of the list by its place in it.
std::string reference(std::uint64_t value) {
    return bigEndian(value, 3);
}

std::string text(const std::string& characters) {
    return "\x5f\x12" + bigEndian(characters.size(), 4) + characters;
}

/// A binary list of these values; the first one holds the others.
std::string binaryList(const std::vector<std::string>& values) {
    std::string bytes = "bplist00";
    std::string offsets;
    for (const std::string& value : values) {
        offsets += bigEndian(bytes.size(), 4);
        bytes += value;
    }
    const std::uint64_t table = bytes.size();
    return bytes + offsets + std::string(6, '\0') + "\x04\x03" + bigEndian(values.size(), 8) + bigEndian(0, 8) +
           bigEndian(table, 8);
}

/// {"key": ["text", "text"]}
std::string anHonestList() {
    return binaryList(
        {"\xd1" + reference(1) + reference(2), text("key"), "\xa2" + reference(3) + reference(3), text("text")});
}

TEST(ABinaryList, IsReadWithValuesThatStandInSeveralPlaces) {
    const auto list = PropertyList::parse(anHonestList());
    ASSERT_TRUE(list);
    EXPECT_THAT((*list)["key"].texts(), ElementsAre("text", "text"));
}

/// A list in which each value but the last refers to the next one, that often.
std::string listOfLevels(std::uint64_t levels, std::size_t times) {
    std::vector<std::string> values;
    for (std::uint64_t level = 1; level < levels; ++level) {
        values.emplace_back(1, static_cast<char>(0xa0 + times));
        for (std::size_t i = 0; i < times; ++i)
            values.back() += reference(level);
    }
    values.emplace_back("\x09");
    return binaryList(values);
}

std::string manyLongTexts() {
    std::string many = "\xaf\x12" + bigEndian(100'000, 4);
    for (int i = 0; i < 100'000; ++i)
        many += reference(1);
    return binaryList({many, text(std::string(500'000, 'x'))});
}

std::string listWithKey(const std::string& key) {
    return binaryList({"\xd1" + reference(1) + reference(2), text(key), text("text")});
}

TEST(ABinaryList, IsNoneThatNoReaderSurvives) {
    EXPECT_FALSE(PropertyList::parse(listOfLevels(130'000, 1))) << "deeper than any stack";
    EXPECT_FALSE(PropertyList::parse(binaryList({"\xa1" + reference(0)}))) << "holds itself";
    EXPECT_FALSE(PropertyList::parse(listOfLevels(60, 2))) << "more values than any memory holds";
    EXPECT_FALSE(PropertyList::parse(manyLongTexts())) << "more text than any memory holds";
    EXPECT_FALSE(PropertyList::parse(listWithKey(std::string{"a\0b", 3}))) << "a character that is none in a key";
}

TEST(ABinaryList, MayBeDamagedInAnyOneByteOrCutShortAnywhere) {
    const std::string honest = anHonestList();
    for (std::size_t position = 0; position < honest.size(); ++position) {
        (void)PropertyList::parse(honest.substr(0, position));
        for (int byte = 0; byte < 256; ++byte) {
            std::string damaged = honest;
            damaged[position] = static_cast<char>(byte);
            (void)PropertyList::parse(damaged);
        }
    }
}

} // namespace
} // namespace simulator
