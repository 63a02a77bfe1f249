#pragma once

#include <QtGlobal>

namespace simulator::tests {

/// While it lives, every warning of Qt fails the test that is running.
class QtMessages {
public:
    QtMessages();
    ~QtMessages();
    QtMessages(const QtMessages&) = delete;
    QtMessages& operator=(const QtMessages&) = delete;

private:
    QtMessageHandler before_;
};

} // namespace simulator::tests
