#include "simulator/disk/BinaryList.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace simulator {

namespace {

constexpr std::size_t trailerSize = 32;
constexpr std::uint64_t costOfValue = 64;
constexpr std::uint64_t mostCost = 64 * 1048576;

/// The highest bits of a value's first byte.
enum Kind : std::uint64_t { simple = 0x0, plainText = 0x5, wideText = 0x6, list = 0xa, set = 0xc, dictionary = 0xd };

struct Value {
    std::uint64_t kind = 0;
    std::uint64_t length = 0;
    /// Where its contents begin.
    std::uint64_t contents = 0;
};

struct Place {
    std::uint64_t value = 0;
    int depth = 0;
    bool isKey = false;
};

/// Nothing if it is not all there.
std::optional<std::uint64_t> numberAt(std::string_view bytes, std::uint64_t offset, std::uint64_t size) {
    if (size == 0 || size > 8 || offset > bytes.size() || bytes.size() - offset < size) return std::nullopt;
    std::uint64_t number = 0;
    for (std::uint64_t i = offset; i < offset + size; ++i)
        number = number << 8U | static_cast<unsigned char>(bytes[i]);
    return number;
}

std::optional<Value> valueAt(std::string_view bytes, std::uint64_t offset) {
    constexpr std::uint64_t lengthFollows = 15;
    const auto marker = numberAt(bytes, offset, 1);
    if (!marker) return std::nullopt;
    const Value value{*marker >> 4U, *marker & 15U, offset + 1};
    if (value.kind == simple || value.length != lengthFollows) return value;
    const auto sizeMarker = numberAt(bytes, value.contents, 1);
    if (!sizeMarker || (*sizeMarker & 15U) > 3) return std::nullopt;
    const std::uint64_t size = 1U << (*sizeMarker & 15U);
    const auto length = numberAt(bytes, value.contents + 1, size);
    if (!length || *length > bytes.size()) return std::nullopt;
    return Value{value.kind, *length, value.contents + 1 + size};
}

/// How many values it refers to.
std::uint64_t referencesOf(const Value& value) {
    if (value.kind == list || value.kind == set) return value.length;
    return value.kind == dictionary ? 2 * value.length : 0;
}

/// Whether it is a text without a character that is none, at which a reader of keys stops the program.
bool isKey(std::string_view bytes, const Value& value) {
    if (value.kind != plainText && value.kind != wideText) return false;
    const std::uint64_t width = value.kind == wideText ? 2 : 1;
    for (std::uint64_t i = 0; i < value.length; ++i) {
        if (numberAt(bytes, value.contents + i * width, width).value_or(0) == 0) return false;
    }
    return true;
}

/// Walks through every place in which a value stands, as a reader does.
class Walk {
public:
    Walk(std::string_view bytes, int deepest) : bytes_{bytes}, deepest_{deepest} {}

    bool isModest() {
        if (!begins()) return false;
        while (!open_.empty()) {
            const Place place = open_.back();
            open_.pop_back();
            if (!visit(place)) return false;
        }
        return true;
    }

private:
    bool begins() {
        if (bytes_.size() < trailerSize) return false;
        const std::size_t trailer = bytes_.size() - trailerSize;
        offsetSize_ = *numberAt(bytes_, trailer + 6, 1);
        referenceSize_ = *numberAt(bytes_, trailer + 7, 1);
        count_ = *numberAt(bytes_, trailer + 8, 8);
        table_ = *numberAt(bytes_, trailer + 24, 8);
        open_.push_back({*numberAt(bytes_, trailer + 16, 8), 0});
        return count_ <= bytes_.size() && table_ <= bytes_.size();
    }

    bool visit(const Place& place) {
        if (place.value >= count_) return false;
        const auto offset = numberAt(bytes_, table_ + place.value * offsetSize_, offsetSize_);
        const auto value = offset ? valueAt(bytes_, *offset) : std::nullopt;
        if (!value) return false;
        const std::uint64_t references = referencesOf(*value);
        cost_ += references > 0 ? references * costOfValue : value->length * (value->kind == wideText ? 2 : 1);
        if (cost_ > mostCost || (place.isKey && !isKey(bytes_, *value))) return false;
        return references == 0 || (place.depth < deepest_ && follow(*value, references, place.depth + 1));
    }

    bool follow(const Value& value, std::uint64_t references, int depth) {
        for (std::uint64_t i = 0; i < references; ++i) {
            const auto reference = numberAt(bytes_, value.contents + i * referenceSize_, referenceSize_);
            if (!reference) return false;
            const bool isKey = value.kind == dictionary && i < value.length;
            open_.push_back({*reference, depth, isKey});
        }
        return true;
    }

    std::string_view bytes_;
    int deepest_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t table_ = 0;
    std::uint64_t cost_ = 0;
    std::vector<Place> open_;
};

} // namespace

bool isModestBinaryList(std::string_view bytes, int deepest) {
    return Walk{bytes, deepest}.isModest();
}

} // namespace simulator
