#include "tests/fuzz/Bytes.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace tests {

std::size_t Bytes::choice(const std::size_t count) {
    if (isAtEnd()) return 0;
    const auto byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return byte % count;
}

std::string Bytes::text(const char end) {
    const std::string text{rest_.substr(0, rest_.find(end))};
    rest_.remove_prefix(std::min(rest_.size(), text.size() + 1));
    return text;
}

void must(const bool holds, const std::string& what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

} // namespace tests

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* const data, const std::size_t size) {
    tests::fuzz(tests::Bytes{{reinterpret_cast<const char*>(data), size}});
    return 0;
}
