#include "simulator/disk/PropertyList.h"

#include "simulator/disk/BinaryList.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace simulator {

namespace {

constexpr int deepest = 64;

struct FreeNode {
    void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, FreeNode>;

struct FreeBytes {
    void operator()(void* bytes) const { std::free(bytes); }
};

PropertyList valueOf(plist_t node, int depth);

PropertyList::Array arrayOf(plist_t node, int depth) {
    PropertyList::Array array;
    const std::uint32_t size = plist_array_get_size(node);
    for (std::uint32_t index = 0; index < size; ++index) {
        array.push_back(valueOf(plist_array_get_item(node, index), depth));
    }
    return array;
}

PropertyList::Dictionary dictionaryOf(plist_t node, int depth) {
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(node, &position);
    const std::unique_ptr<void, FreeBytes> owner{position};
    PropertyList::Dictionary dictionary;
    while (true) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, position, &key, &value);
        const std::unique_ptr<char, FreeBytes> keyOwner{key};
        if (!value) return dictionary;
        dictionary.insert_or_assign(key, valueOf(value, depth));
    }
}

std::string textOf(plist_t node) {
    std::uint64_t length = 0;
    const char* const bytes = plist_get_string_ptr(node, &length);
    return {bytes, length};
}

PropertyList::Integer integerOf(plist_t node) {
    std::uint64_t number = 0;
    plist_get_uint_val(node, &number);
    return {std::to_string(static_cast<std::int64_t>(number))};
}

bool truthOf(plist_t node) {
    std::uint8_t truth = 0;
    plist_get_bool_val(node, &truth);
    return truth != 0;
}

PropertyList valueOf(plist_t node, int depth) {
    if (depth == deepest) return {};
    switch (plist_get_node_type(node)) {
    case PLIST_STRING:
        return textOf(node);
    case PLIST_UINT:
        return integerOf(node);
    case PLIST_BOOLEAN:
        return truthOf(node);
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
        for (const auto& [key, value] : dictionary) {
            plist_dict_set_item(node.get(), key.c_str(), value.visit(NodeOfValue{}).release());
        }
        return node;
    }
};

} // namespace

std::optional<PropertyList> PropertyList::parse(const std::string& bytes) {
    plist_t root = nullptr;
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (plist_is_binary(bytes.data(), length)) {
        if (!isModestBinaryList(bytes, deepest)) return std::nullopt;
        plist_from_bin(bytes.data(), length, &root);
    } else {
        plist_from_xml(bytes.data(), length, &root);
    }
    const Node owner{root};
    if (!root) return std::nullopt;
    return valueOf(root, 0);
}

std::string PropertyList::toXml() const {
    const Node root = visit(NodeOfValue{});
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root.get(), &text, &length);
    const std::unique_ptr<char, FreeBytes> owner{text};
    return {text, length};
}

bool PropertyList::isTrue() const {
    const bool* const truth = std::get_if<bool>(&value_);
    return truth && *truth;
}

const std::string& PropertyList::text() const {
    static const std::string none;
    if (const auto* const integer = std::get_if<Integer>(&value_)) return integer->text;
    const auto* const text = std::get_if<std::string>(&value_);
    return text ? *text : none;
}

const PropertyList::Array& PropertyList::array() const {
    static const Array none;
    const auto* const array = std::get_if<Array>(&value_);
    return array ? *array : none;
}

const PropertyList::Dictionary& PropertyList::dictionary() const {
    static const Dictionary none;
    const auto* const dictionary = std::get_if<Dictionary>(&value_);
    return dictionary ? *dictionary : none;
}

const PropertyList& PropertyList::operator[](const std::string& key) const {
    static const PropertyList none;
    const auto found = dictionary().find(key);
    return found == dictionary().end() ? none : found->second;
}

std::vector<std::string> PropertyList::texts() const {
    if (!text().empty()) return {text()};
    std::vector<std::string> texts;
    for (const PropertyList& value : array()) {
        if (!value.text().empty()) texts.push_back(value.text());
    }
    return texts;
}

} // namespace simulator
