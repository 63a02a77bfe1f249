#include "simulator/sysextctl/Print.h"

#include <cstdio>

namespace simulator::ctl {

bool print(const QString& text) {
    const auto bytes = text.toUtf8();
    const auto length = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, length, stdout) == length && std::fflush(stdout) == 0;
}

} // namespace simulator::ctl
