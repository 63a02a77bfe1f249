#pragma once

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace simulator {

/// Acts as a user who may not write what root may.
class AsNobody {
public:
    AsNobody() : user_{geteuid()} {
        if (user_ == 0 && seteuid(65534) != 0) throw std::runtime_error{"cannot act as another user"};
    }
    ~AsNobody() {
        if (seteuid(user_) != 0) std::abort();
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    uid_t user_;
};

} // namespace simulator
