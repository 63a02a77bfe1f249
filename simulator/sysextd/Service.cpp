#include "simulator/sysextd/Service.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace simulator {

namespace {

/// At once: no pending answer may be sent.
[[noreturn]] void die(const std::string& reason) {
    std::fprintf(stderr, "sysextd: %s\n", reason.c_str());
    std::_Exit(1);
}

State loadedFrom(const Store& store, const std::string& file) {
    State state = store.load();
    auto profile = readProfile(state.settings.profile.source);
    if (const auto* const refusal = std::get_if<Refusal>(&profile))
        throw StoreFailure{file, "it is damaged: " + refusal->message};
    state.settings.profile = std::get<Profile>(std::move(profile));
    return state;
}

} // namespace

Service::Service(const std::string& storeFile) : store_{storeFile}, machine_{loadedFrom(store_, storeFile), disk_} {
    store_.save(machine_.state(), machine_.takeOutbox().copies);
}

Verdict Service::perform(const std::function<Verdict(Machine&)>& deed) {
    Verdict verdict = deed(machine_);
    stepLater();
    return verdict;
}

void Service::stepLater() {
    if (std::exchange(isTurnDue_, true)) return;
    QMetaObject::invokeMethod(this, &Service::step, Qt::QueuedConnection);
}

void Service::step() {
    settle();
    isTurnDue_ = false;
    if (machine_.step()) stepLater();
}

void Service::settle() {
    if (!isTurnDue_) return;
    const Outbox outbox = machine_.takeOutbox();
    keep(outbox.copies);
    if (outbox.crashed) {
        emit dying();
        die("crashes during a request, as ordered");
    }
    for (const Answer& answer : outbox.answers)
        emit answered(answer);
    for (const Event& event : outbox.events)
        emit happened(event);
    for (const SealToCheck& seal : outbox.seals)
        check(seal);
    if (outbox.restarting) emit restarting();
    if (outbox.moved || !outbox.events.empty()) emit changed();
    emit settled();
}

void Service::check(const SealToCheck& seal) {
    checks_.start([this, seal] {
        const bool matches = isAsSealed(seal.extension);
        const auto tell = [this, seal, matches] {
            perform([&](Machine& machine) -> Verdict {
                machine.sealChecked(seal.request, matches);
                return done;
            });
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    });
}

void Service::keep(const std::set<std::int64_t>& touched) {
    try {
        store_.save(machine_.state(), touched);
    } catch (const StoreFailure& failure) {
        die(failure.what());
    }
}

} // namespace simulator
