#include "platform/Bundle.h"

#include "platform/linux/BundleReader.h"

#include <plist/plist.h>

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

struct FreePlist {
    void operator()(void* const node) const { plist_free(node); }
};
using Plist = std::unique_ptr<void, FreePlist>;

struct FreeMemory {
    void operator()(void* const memory) const { std::free(memory); }
};
template <typename T>
using Allocated = std::unique_ptr<T, FreeMemory>;

Plist parse(const std::string& bytes) {
    plist_t root = nullptr;
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (plist_is_binary(bytes.data(), length) != 0) {
        plist_from_bin(bytes.data(), length, &root);
    } else {
        plist_from_xml(bytes.data(), length, &root);
    }
    return Plist{root};
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
    const Allocated<void> owned{iterator};
    while (true) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(root, iterator, &key, &value);
        const Allocated<char> ownedKey{key};
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
        return error ? "it cannot be read: " + error.message() : "it is no file";
    }
    std::ifstream stream{file, std::ios::binary};
    if (!stream) return std::string{"it cannot be read: "} + std::strerror(errno);
    const std::string bytes{std::istreambuf_iterator<char>{stream}, {}};
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) return "it is too large";
    const auto root = parse(bytes);
    if (!root) return "it is no property list";
    if (plist_get_node_type(root.get()) != PLIST_DICT) return "its property list is no dictionary";
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
    return {contents / "Info.plist", nullptr, "the program lies in no bundle", contents / "Resources"};
}

} // namespace platform
