#pragma once

#include "simulator/core/Answer.h"
#include "simulator/core/Request.h"

namespace simulator {

/// What happens to a request.
enum class RequestEvent {
    delayPassed,
    failed,            ///< a check, an ordered error, or a profile that forbids it since
    alreadyActive,     ///< the very version is activated
    alreadyWaiting,    ///< the very version waits for the user
    hollow,            ///< an ordered fault
    isNew,             ///< a copy of it is made
    needsQuestion,     ///< another version is installed, or, in developer mode, the same
    needsNoQuestion,   ///< nothing is installed
    replace,           ///< the application's answer
    cancel,            ///< the application's answer
    needsApproval,     ///< no approval is on record
    needsHiddenPrompt, ///< this or alreadyWaiting, and a fault keeps the prompt away
    activated,         ///< approval is on record, or was given
    denied,            ///< by the user
    deniedUnheard,     ///< the same, on a system that does not tell
    needsAdministrator,
    mayRemove,    ///< no administrator need be asked, or one has authorised it
    mayNotRemove, ///< the administrator refused
    removed,      ///< the copies are on their way out
    listed,       ///< the copies were looked up
    goesSilent,   ///< an ordered fault
    superseded,   ///< a later request for the same extension
    withdrawn,    ///< the machine was reset
    clientLeft,
};

/// What a client hears.
enum class Reply {
    nothing,
    replacementAsked,
    needsApproval,
    completed,    ///< finished 0
    finished,     ///< finished 0, or 1 where a driver in use runs on until the restart
    failed,       ///< with the code of a check, of an ordered error, or 12 where the older request is kept
    canceled,     ///< failed with 11
    superseded,   ///< failed with 12
    unauthorized, ///< failed with 13, or 11 on a system that is switched to that
    foundProperties,
};

struct RequestTransition {
    Stage from;
    RequestEvent event;
    Stage to;
    Reply reply;
};

// clang-format off
inline constexpr std::array requestTransitions{
    //                from                  event                             to                    reply
    // An activation.
    RequestTransition{Stage::delayed,       RequestEvent::delayPassed,        Stage::checking,      Reply::nothing},
    RequestTransition{Stage::checking,      RequestEvent::failed,             Stage::ended,         Reply::failed},
    RequestTransition{Stage::checking,      RequestEvent::hollow,             Stage::ended,         Reply::completed},
    RequestTransition{Stage::checking,      RequestEvent::alreadyActive,      Stage::ended,         Reply::completed},
    RequestTransition{Stage::checking,      RequestEvent::alreadyWaiting,     Stage::user,          Reply::needsApproval},
    RequestTransition{Stage::checking,      RequestEvent::needsHiddenPrompt,  Stage::user,          Reply::nothing},
    RequestTransition{Stage::checking,      RequestEvent::isNew,              Stage::validating,    Reply::nothing},
    RequestTransition{Stage::validating,    RequestEvent::failed,             Stage::ended,         Reply::failed},
    RequestTransition{Stage::validating,    RequestEvent::needsQuestion,      Stage::replacement,   Reply::replacementAsked},
    RequestTransition{Stage::validating,    RequestEvent::needsNoQuestion,    Stage::staging,       Reply::nothing},
    RequestTransition{Stage::replacement,   RequestEvent::replace,            Stage::staging,       Reply::nothing},
    RequestTransition{Stage::replacement,   RequestEvent::cancel,             Stage::ended,         Reply::canceled},
    RequestTransition{Stage::staging,       RequestEvent::failed,             Stage::ended,         Reply::failed},
    RequestTransition{Stage::staging,       RequestEvent::needsApproval,      Stage::user,          Reply::needsApproval},
    RequestTransition{Stage::staging,       RequestEvent::needsHiddenPrompt,  Stage::user,          Reply::nothing},
    RequestTransition{Stage::staging,       RequestEvent::activated,          Stage::ended,         Reply::finished},
    RequestTransition{Stage::user,          RequestEvent::activated,          Stage::ended,         Reply::finished},
    RequestTransition{Stage::user,          RequestEvent::denied,             Stage::ended,         Reply::canceled},
    RequestTransition{Stage::user,          RequestEvent::deniedUnheard,      Stage::silent,        Reply::nothing},
    // A deactivation.
    RequestTransition{Stage::checking,      RequestEvent::needsAdministrator, Stage::authorization, Reply::nothing},
    RequestTransition{Stage::checking,      RequestEvent::mayRemove,          Stage::removing,      Reply::nothing},
    RequestTransition{Stage::authorization, RequestEvent::mayRemove,          Stage::removing,      Reply::nothing},
    RequestTransition{Stage::authorization, RequestEvent::mayNotRemove,       Stage::ended,         Reply::unauthorized},
    RequestTransition{Stage::removing,      RequestEvent::removed,            Stage::ended,         Reply::finished},
    // A question for properties.
    RequestTransition{Stage::checking,      RequestEvent::listed,             Stage::ended,         Reply::foundProperties},
    // Whatever it is.
    RequestTransition{Stage::checking,      RequestEvent::goesSilent,         Stage::silent,        Reply::nothing},
    RequestTransition{Stage::delayed,       RequestEvent::superseded,         Stage::ended,         Reply::superseded},
    RequestTransition{Stage::checking,      RequestEvent::superseded,         Stage::ended,         Reply::superseded},
    RequestTransition{Stage::validating,    RequestEvent::superseded,         Stage::ended,         Reply::superseded},
    RequestTransition{Stage::replacement,   RequestEvent::superseded,         Stage::ended,         Reply::superseded},
    RequestTransition{Stage::staging,       RequestEvent::superseded,         Stage::ended,         Reply::superseded},
    RequestTransition{Stage::user,          RequestEvent::superseded,         Stage::ended,         Reply::superseded},
    RequestTransition{Stage::authorization, RequestEvent::superseded,         Stage::ended,         Reply::superseded},
    RequestTransition{Stage::removing,      RequestEvent::superseded,         Stage::ended,         Reply::superseded},
    RequestTransition{Stage::delayed,       RequestEvent::withdrawn,          Stage::ended,         Reply::canceled},
    RequestTransition{Stage::checking,      RequestEvent::withdrawn,          Stage::ended,         Reply::canceled},
    RequestTransition{Stage::validating,    RequestEvent::withdrawn,          Stage::ended,         Reply::canceled},
    RequestTransition{Stage::replacement,   RequestEvent::withdrawn,          Stage::ended,         Reply::canceled},
    RequestTransition{Stage::staging,       RequestEvent::withdrawn,          Stage::ended,         Reply::canceled},
    RequestTransition{Stage::user,          RequestEvent::withdrawn,          Stage::ended,         Reply::canceled},
    RequestTransition{Stage::authorization, RequestEvent::withdrawn,          Stage::ended,         Reply::canceled},
    RequestTransition{Stage::removing,      RequestEvent::withdrawn,          Stage::ended,         Reply::canceled},
    RequestTransition{Stage::silent,        RequestEvent::withdrawn,          Stage::ended,         Reply::nothing},
    // What was begun goes on without the client; what waits for someone's word on its behalf does not.
    RequestTransition{Stage::delayed,       RequestEvent::clientLeft,         Stage::delayed,       Reply::nothing},
    RequestTransition{Stage::checking,      RequestEvent::clientLeft,         Stage::checking,      Reply::nothing},
    RequestTransition{Stage::validating,    RequestEvent::clientLeft,         Stage::validating,    Reply::nothing},
    RequestTransition{Stage::replacement,   RequestEvent::clientLeft,         Stage::ended,         Reply::nothing},
    RequestTransition{Stage::staging,       RequestEvent::clientLeft,         Stage::staging,       Reply::nothing},
    RequestTransition{Stage::user,          RequestEvent::clientLeft,         Stage::ended,         Reply::nothing},
    RequestTransition{Stage::authorization, RequestEvent::clientLeft,         Stage::ended,         Reply::nothing},
    RequestTransition{Stage::removing,      RequestEvent::clientLeft,         Stage::removing,      Reply::nothing},
    RequestTransition{Stage::silent,        RequestEvent::clientLeft,         Stage::ended,         Reply::nothing},
};
// clang-format on

/// The row for an event in a stage; null where the event means nothing to it.
const RequestTransition* transitionOf(Stage from, RequestEvent event);

} // namespace simulator
