#include "platform/Bundle.h"

#include "platform/linux/BundleReader.h"

#include <plist/plist.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <variant>

namespace platform {

namespace {

namespace fs = std::filesystem;

template <typename T>
using Owned = std::unique_ptr<T, void (*)(void*)>;

/// The big-endian number in the `size` bytes from `at` on; those beyond the end do not count.
std::size_t numberIn(const std::string_view bytes, const std::size_t at, const std::size_t size) {
    std::size_t number = 0;
    for (const char byte : bytes.substr(std::min(at, bytes.size()), size))
        number = number << 8U | static_cast<unsigned char>(byte);
    return number;
}

/// Replaces the NULs in the object at `at` if it is a string, of ASCII or of UTF-16.
void replaceNuls(std::string& bytes, const std::size_t at) {
    const std::size_t width = (numberIn(bytes, at, 1) >> 4U) - 4;
    if (width != 1 && width != 2) return;
    std::size_t length = numberIn(bytes, at, 1) & 0xFU;
    std::size_t start = at + 1;
    if (length == 0xF) { // the length follows, as an integer
        const std::size_t size = std::size_t{1} << (numberIn(bytes, start, 1) & 0xFU);
        length = numberIn(bytes, start + 1, size);
        start = std::min(start + 1 + size, bytes.size());
    }
    const std::size_t end = start + std::min(length, (bytes.size() - start) / width) * width;
    for (std::size_t unit = start; unit < end; unit += width)
        if (numberIn(bytes, unit, width) == 0) bytes[unit + width - 1] = '\x1A';
}

/// libplist cuts off an ASCII string of a binary list at its first NUL, and ends the program for a NUL in a UTF-16 key.
/// A substitute character keeps them whole.
std::string withoutNuls(std::string bytes) {
    const std::size_t trailer = bytes.size() - std::min<std::size_t>(bytes.size(), 32);
    const std::size_t offsetSize = numberIn(bytes, trailer + 6, 1);
    const std::size_t objects = std::min(numberIn(bytes, trailer + 8, 8), bytes.size());
    const std::size_t offsets = numberIn(bytes, trailer + 24, 8);
    for (std::size_t object = 0; object < objects; ++object)
        replaceNuls(bytes, numberIn(bytes, offsets + object * offsetSize, offsetSize));
    return bytes;
}

Owned<void> parse(const std::string& bytes) {
    plist_t root = nullptr;
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (plist_is_binary(bytes.data(), length) != 0) {
        plist_from_bin(withoutNuls(bytes).data(), length, &root);
    } else {
        plist_from_xml(bytes.data(), length, &root);
    }
    return {root, plist_free};
}

InfoValue valueOf(plist_t node) {
    if (plist_get_node_type(node) != PLIST_STRING) return std::nullopt;
    std::uint64_t length = 0;
    const char* const text = plist_get_string_ptr(node, &length);
    return std::string{text, static_cast<std::size_t>(length)};
}

InfoDictionary dictionaryOf(plist_t root) {
    InfoDictionary dictionary;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(root, &iterator);
    const Owned<void> ownedIterator{iterator, std::free};
    while (true) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(root, iterator, &key, &value);
        const Owned<char> ownedKey{key, std::free};
        if (value == nullptr) return dictionary;
        dictionary.insert_or_assign(key, valueOf(value));
    }
}

/// The dictionary, or why there is none.
std::variant<InfoDictionary, std::string> readDictionary(const fs::path& file) {
    std::error_code error;
    const auto status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found) return "there is no such file";
    if (status.type() != fs::file_type::regular) {
        return error ? "it cannot be read: " + error.message() : "it is not a file";
    }
    std::ifstream stream{file, std::ios::binary};
    if (!stream) return std::string{"it cannot be read: "} + std::strerror(errno);
    const std::string bytes{std::istreambuf_iterator<char>{stream}, {}};
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) return "it is too large";
    const auto root = parse(bytes);
    if (!root) return "it is not a property list";
    if (plist_get_node_type(root.get()) != PLIST_DICT) return "its property list is not a dictionary";
    return dictionaryOf(root.get());
}

} // namespace

const NSBundle& NSBundle::mainBundle() {
    static const NSBundle bundle = [] {
        std::error_code error;
        return readBundleOfExecutable(fs::read_symlink("/proc/self/exe", error));
    }();
    return bundle;
}

NSBundle readBundle(const fs::path& bundle) {
    const auto contents = bundle / "Contents";
    const auto infoFile = contents / "Info.plist";
    const auto resources = contents / "Resources";
    const auto read = readDictionary(infoFile);
    if (const auto* problem = std::get_if<std::string>(&read)) return {infoFile, nullptr, *problem, resources};
    return {infoFile, std::make_shared<const InfoDictionary>(std::get<InfoDictionary>(read)), {}, resources};
}

NSBundle readBundleOfExecutable(const fs::path& executable) {
    const auto folder = executable.parent_path();
    const auto contents = folder.parent_path();
    if (folder.filename() == "MacOS" && contents.filename() == "Contents") return readBundle(contents.parent_path());
    return {contents / "Info.plist", nullptr, "the program is not in a bundle", contents / "Resources"};
}

} // namespace platform
