#pragma once

#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace simulator {

/// A property list as a value: what this program reads of one. An integer is kept as its decimal text, which is
/// written as a text; everything else that is neither text, truth, list nor dictionary is nothing.
class PropertyList {
public:
    using Array = std::vector<PropertyList>;
    using Dictionary = std::map<std::string, PropertyList>;
    struct Integer {
        std::string text;
    };

    PropertyList() = default;
    PropertyList(std::string text) : value_{std::move(text)} {}
    PropertyList(Integer integer) : value_{std::move(integer)} {}
    PropertyList(bool truth) : value_{truth} {}
    PropertyList(Array array) : value_{std::move(array)} {}
    PropertyList(Dictionary dictionary) : value_{std::move(dictionary)} {}
    /// No text literal is to be taken for a truth.
    PropertyList(const char* text) : value_{std::string{text}} {}

    /// Of an XML or binary property list; nothing if it is neither. Whatever lies deeper than 64 levels is nothing.
    static std::optional<PropertyList> parse(const std::string& bytes);
    /// Of a file; nothing if it is no regular file, or of more than a megabyte.
    static std::optional<PropertyList> read(const std::string& file);
    /// As XML.
    std::string toXml() const;

    template <typename Visitor>
    auto visit(const Visitor& visitor) const {
        return std::visit(visitor, value_);
    }

    /// Of the types above, std::string and bool. An integer is no text.
    template <typename Value>
    bool is() const {
        return std::holds_alternative<Value>(value_);
    }
    bool isTrue() const { return as<bool>(); }
    /// Empty where there is none of that kind; an integer's is its decimal text.
    const std::string& text() const;
    const Array& array() const { return as<Array>(); }
    const Dictionary& dictionary() const { return as<Dictionary>(); }
    /// The value for a key; one that is nothing where there is none.
    const PropertyList& operator[](const std::string& key) const;
    /// The texts in a list; the text itself where it is one.
    std::vector<std::string> texts() const;

private:
    template <typename Value>
    const Value& as() const {
        static const Value none{};
        const auto* const value = std::get_if<Value>(&value_);
        return value ? *value : none;
    }

    std::variant<std::monostate, std::string, Integer, bool, Array, Dictionary> value_;
};

} // namespace simulator
