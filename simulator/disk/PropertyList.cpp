#include "simulator/disk/PropertyList.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace simulator {

namespace {

constexpr int deepest = 64;
constexpr std::uintmax_t longest = 1048576;

/// A binary list. In this format a value may stand in many places: a few bytes may stand for more levels than any stack
/// has room for, and for more values and more text than any memory.
class BinaryList {
public:
    explicit BinaryList(std::string_view bytes) : bytes_{bytes} {}

    /// Whether libplist survives it: its values are few, small and not deep, each counted wherever it stands, and no
    /// key holds a character that is none.
    bool isModest() {
        try {
            const std::uint64_t trailer = std::uint64_t{bytes_.size()} - 32;
            offsetSize_ = number(trailer + 6, 1);
            referenceSize_ = number(trailer + 7, 1);
            table_ = number(trailer + 24, 8);
            return isModest(number(trailer + 16, 8), 0, false);
        } catch (const std::out_of_range&) {
            return false;
        }
    }

private:
    enum Kind : std::uint64_t { simple = 0x0, wideText = 0x6, list = 0xa, set = 0xc, dictionary = 0xd };

    struct Value {
        std::uint64_t kind = 0;
        std::uint64_t length = 0;
        /// Where its contents begin.
        std::uint64_t contents = 0;
    };

    /// Throws std::out_of_range where it is not all there.
    std::uint64_t number(std::uint64_t offset, std::uint64_t size) const {
        std::uint64_t number = 0;
        for (std::uint64_t i = 0; i < size; ++i)
            number = number << 8U | static_cast<unsigned char>(bytes_.at(offset + i));
        return number;
    }

    Value valueAt(std::uint64_t offset) const {
        constexpr std::uint64_t lengthFollows = 15;
        const std::uint64_t marker = number(offset, 1);
        const Value value{marker >> 4U, marker & 15U, offset + 1};
        if (value.kind == simple || value.length != lengthFollows) return value;
        const std::uint64_t size = 1U << (number(value.contents, 1) & 3U);
        return {value.kind, number(value.contents + 1, size), value.contents + 1 + size};
    }

    bool isModest(std::uint64_t place, int depth, bool isKey) {
        const Value value = valueAt(number(table_ + place * offsetSize_, offsetSize_));
        const std::uint64_t width = value.kind == wideText ? 2 : 1;
        const std::uint64_t cost = 64 + value.length * width;
        if (value.length > bytes_.size() || depth > deepest || cost > left_) return false;
        left_ -= cost;
        for (std::uint64_t i = 0; isKey && i < value.length; ++i)
            if (number(value.contents + i * width, width) == 0) return false;
        return areModest(value, depth + 1);
    }

    /// What it refers to: the keys of a dictionary stand before its values.
    bool areModest(const Value& value, int depth) {
        const std::uint64_t keys = value.kind == dictionary ? value.length : 0;
        const bool isList = value.kind == list || value.kind == set;
        const std::uint64_t references = isList ? value.length : 2 * keys;
        for (std::uint64_t i = 0; i < references; ++i) {
            const std::uint64_t place = number(value.contents + i * referenceSize_, referenceSize_);
            if (!isModest(place, depth, i < keys)) return false;
        }
        return true;
    }

    std::string_view bytes_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t table_ = 0;
    /// About as many bytes of memory as it may still take.
    std::uint64_t left_ = std::uint64_t{64} * 1048576;
};

struct Free {
    void operator()(void* node) const { plist_free(node); }
    void operator()(char* bytes) const { std::free(bytes); }
};
using Node = std::unique_ptr<void, Free>;
using Bytes = std::unique_ptr<char, Free>;

PropertyList valueOf(plist_t node, int depth);

PropertyList::Array arrayOf(plist_t node, int depth) {
    PropertyList::Array array;
    const std::uint32_t size = plist_array_get_size(node);
    for (std::uint32_t index = 0; index < size; ++index)
        array.push_back(valueOf(plist_array_get_item(node, index), depth));
    return array;
}

PropertyList::Dictionary dictionaryOf(plist_t node, int depth) {
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(node, &position);
    const Bytes owner{static_cast<char*>(position)};
    PropertyList::Dictionary dictionary;
    while (true) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, position, &key, &value);
        const Bytes keyOwner{key};
        if (!value) return dictionary;
        dictionary.insert_or_assign(key, valueOf(value, depth));
    }
}

PropertyList valueOf(plist_t node, int depth) {
    std::uint64_t number = 0;
    std::uint8_t truth = 0;
    if (depth == deepest) return {};
    switch (plist_get_node_type(node)) {
    case PLIST_STRING:
        return std::string{plist_get_string_ptr(node, nullptr)};
    case PLIST_UINT:
        plist_get_uint_val(node, &number);
        return PropertyList::Integer{std::to_string(static_cast<std::int64_t>(number))};
    case PLIST_BOOLEAN:
        plist_get_bool_val(node, &truth);
        return truth != 0;
    case PLIST_ARRAY:
        return arrayOf(node, depth + 1);
    case PLIST_DICT:
        return dictionaryOf(node, depth + 1);
    default:
        return {};
    }
}

struct NodeOfValue {
    Node operator()(std::monostate) const { return Node{plist_new_string("")}; }
    Node operator()(const std::string& text) const { return Node{plist_new_string(text.c_str())}; }
    Node operator()(const PropertyList::Integer& integer) const { return operator()(integer.text); }
    Node operator()(bool truth) const { return Node{plist_new_bool(truth ? 1 : 0)}; }
    Node operator()(const PropertyList::Array& array) const {
        Node node{plist_new_array()};
        for (const PropertyList& value : array)
            plist_array_append_item(node.get(), value.visit(NodeOfValue{}).release());
        return node;
    }
    Node operator()(const PropertyList::Dictionary& dictionary) const {
        Node node{plist_new_dict()};
        for (const auto& [key, value] : dictionary)
            plist_dict_set_item(node.get(), key.c_str(), value.visit(NodeOfValue{}).release());
        return node;
    }
};

} // namespace

std::optional<PropertyList> PropertyList::parse(const std::string& bytes) {
    plist_t root = nullptr;
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (plist_is_binary(bytes.data(), length)) {
        if (!BinaryList{bytes}.isModest()) return std::nullopt;
        plist_from_bin(bytes.data(), length, &root);
    } else {
        plist_from_xml(bytes.data(), length, &root);
    }
    const Node owner{root};
    if (!root) return std::nullopt;
    return valueOf(root, 0);
}

std::optional<PropertyList> PropertyList::read(const std::string& file) {
    std::error_code problem;
    if (!std::filesystem::is_regular_file(file, problem)) return std::nullopt;
    if (std::filesystem::file_size(file, problem) > longest || problem) return std::nullopt;
    std::ifstream stream{file, std::ios::binary};
    return parse({std::istreambuf_iterator<char>{stream}, {}});
}

std::string PropertyList::toXml() const {
    const Node root = visit(NodeOfValue{});
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root.get(), &text, &length);
    const Bytes owner{text};
    return {text, length};
}

const std::string& PropertyList::text() const {
    const auto* const integer = std::get_if<Integer>(&value_);
    return integer ? integer->text : as<std::string>();
}

const PropertyList& PropertyList::operator[](const std::string& key) const {
    static const PropertyList none;
    const auto found = dictionary().find(key);
    return found == dictionary().end() ? none : found->second;
}

std::vector<std::string> PropertyList::texts() const {
    if (!text().empty()) return {text()};
    std::vector<std::string> texts;
    for (const PropertyList& value : array())
        if (!value.text().empty()) texts.push_back(value.text());
    return texts;
}

} // namespace simulator
