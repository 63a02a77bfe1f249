#pragma once

#include "simulator/core/Disk.h"

#include <optional>
#include <string>

namespace simulator {

/// What an activation asks for.
struct Subject {
    /// The bundle of the application that asks; nothing if it is in none.
    std::optional<BundleOnDisk> bundle;
    std::string identifier;
    const Settings* settings = nullptr;
    /// The extension of that identifier in the bundle, by its file name or else by its Info.plist; nothing if there is
    /// none.
    std::optional<ExtensionOnDisk> extension;
    /// Its files match its seal. Set this before validation.
    bool sealMatches = false;
};

/// The subject of a request. The settings must outlive it.
Subject subjectOf(std::optional<BundleOnDisk> bundle, const std::string& identifier, const Settings& settings);

/// Whether the application contains the extension under the right name, from its own team.
bool isCarried(const Subject& subject);

/// Whether the application may ask and contains what it asks for. Nothing: it passes.
std::optional<Failure> firstFailedLookup(const Subject& subject);
/// Whether the extension, which passed the lookups, is sound and allowed. Nothing: it passes.
std::optional<Failure> firstFailedValidation(const Subject& subject);

/// Whether the management profile lets a copy be enabled; an enabled copy stays enabled. Nothing: it does.
std::optional<Failure> failedPolicy(const Extension& extension, const Settings& settings);

} // namespace simulator
