#pragma once

#include "simulator/core/Disk.h"

#include <optional>
#include <string>

namespace simulator {

/// What an activation is about.
struct Subject {
    /// The bundle of the application that asks; null if it runs from none.
    const BundleOnDisk* bundle = nullptr;
    std::string identifier;
    const Settings* settings = nullptr;
    /// The extension of that identifier in the bundle, by its file name or else by its Info.plist; null if there is
    /// none.
    const ExtensionOnDisk* extension = nullptr;
    /// Its files are as they were when it was sealed. To be set before it is validated.
    bool sealMatches = false;
};

/// The subject of a request. All that is given must outlive it.
Subject subjectOf(const BundleOnDisk* bundle, const std::string& identifier, const Settings& settings);

/// Whether the application carries the extension, under its own name and of its own team.
bool isCarried(const Subject& subject);

/// Whether the application may ask, and what it asks for is there. Nothing: it passes.
std::optional<Failure> firstFailedLookup(const Subject& subject);
/// Whether the extension is sound and allowed. It has passed the lookups. Nothing: it passes.
std::optional<Failure> firstFailedValidation(const Subject& subject);

/// Whether the management profile lets a copy of it be enabled; what is enabled already stays so. Nothing: it does.
std::optional<Failure> failedPolicy(const Extension& extension, const Settings& settings);

} // namespace simulator
