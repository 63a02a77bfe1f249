#pragma once

#include <string>

namespace simulator {

/// The place of a store, for this process alone while it is being opened: of two services that begin at once one has
/// it. Every member throws StoreFailure, in the name of the store.
class StoreFolder {
public:
    /// Makes the folder, and those on the way, where there are none.
    explicit StoreFolder(std::string store);
    ~StoreFolder();
    StoreFolder(const StoreFolder&) = delete;
    StoreFolder& operator=(const StoreFolder&) = delete;

    const std::string& store() const { return store_; }
    /// Whether there is anything in the place of the store, whatever it is.
    bool isTaken() const;
    /// Whether there are changes that stand beside the store and not yet in it.
    bool hasLog() const;

    /// Where a first store is made, to be put in its place when it is whole.
    std::string beginning() const { return store_ + ".new"; }
    /// Takes away what is left beside a place that is not taken: the logs of a store that is no more, which would be
    /// taken for those of the next one, and a beginning that came to nothing.
    void sweep() const;
    /// Puts what was made at the beginning in the place of the store, for good.
    void putInPlace() const;

private:
    [[noreturn]] void fail(const std::string& reason) const;

    std::string store_;
    int folder_ = -1;
};

} // namespace simulator
