#include "simulator/play/Deeds.h"

namespace simulator::play {

namespace {

QString text(const std::string& value) {
    return QString::fromStdString(value);
}

QString text(std::string_view view) {
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

struct Calling {
    ComKelvraSimulator1ControlInterface& control;

    QDBusPendingCall operator()(const scenario::ByPerson& deed) const {
        const QString identifier = text(deed.identifier);
        switch (deed.what) {
        case scenario::ByPerson::What::allow:
            return control.Allow(identifier);
        case scenario::ByPerson::What::deny:
            return control.Deny(identifier);
        case scenario::ByPerson::What::authorize:
            return control.Authorize(identifier);
        case scenario::ByPerson::What::refuse:
            return control.Refuse(identifier);
        case scenario::ByPerson::What::disable:
            return control.Disable(identifier);
        case scenario::ByPerson::What::enable:
            break;
        }
        return control.Enable(identifier);
    }
    QDBusPendingCall operator()(const scenario::Restart&) const { return control.Restart(); }
    QDBusPendingCall operator()(const scenario::Reset&) const { return control.Reset(); }
    QDBusPendingCall operator()(const scenario::Install& deed) const {
        return control.Install(text(deed.identifier), text(deed.version.shortVersion), text(deed.version.version),
                               text(deed.condition));
    }
    QDBusPendingCall operator()(const scenario::Uninstall& deed) const {
        return control.Uninstall(text(deed.team), text(deed.identifier));
    }
    QDBusPendingCall operator()(const scenario::SetDeveloperMode& deed) const {
        return control.SetDeveloperMode(deed.on);
    }
    QDBusPendingCall operator()(const scenario::SetProfile& deed) const {
        return control.SetProfile(QByteArray::fromStdString(deed.contents));
    }
    QDBusPendingCall operator()(const scenario::Advance& deed) const { return control.Advance(deed.milliseconds); }
    QDBusPendingCall operator()(const scenario::SetSwitch& deed) const {
        return control.SetSwitch(text(deed.name), text(deed.value));
    }
    QDBusPendingCall operator()(const scenario::OrderFault& deed) const {
        const Fault& fault = deed.fault;
        return control.OrderFault(fault.request ? text(nameOf(*fault.request)) : "any", text(nameOf(fault.kind)),
                                  text(fault.failure.domain), fault.failure.code, text(fault.failure.description),
                                  fault.milliseconds);
    }
};

} // namespace

QDBusPendingReply<> callOf(ComKelvraSimulator1ControlInterface& control, const scenario::Deed& deed) {
    return std::visit(Calling{control}, deed);
}

} // namespace simulator::play
