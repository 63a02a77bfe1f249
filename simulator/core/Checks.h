#pragma once

#include "simulator/core/Disk.h"

#include <optional>
#include <string>

namespace simulator {

/// What an activation is about.
struct Subject {
    /// The bundle of the application that asks; nothing if it runs from none.
    std::optional<BundleOnDisk> bundle;
    std::string identifier;
    const Settings* settings = nullptr;
    /// The extension of that identifier in the bundle, by its file name or else by its Info.plist; nothing if there is
    /// none.
    std::optional<ExtensionOnDisk> extension;
    /// Its files are as they were when it was sealed. To be set before it is validated.
    bool sealMatches = false;
};

/// The subject of a request. The settings must outlive it.
Subject subjectOf(std::optional<BundleOnDisk> bundle, const std::string& identifier, const Settings& settings);

/// Whether the application carries the extension, under its own name and of its own team.
bool isCarried(const Subject& subject);

/// Whether the application may ask, and what it asks for is there. Nothing: it passes.
std::optional<Failure> firstFailedLookup(const Subject& subject);
/// Whether the extension is sound and allowed. It has passed the lookups. Nothing: it passes.
std::optional<Failure> firstFailedValidation(const Subject& subject);

/// Whether the management profile lets a copy of it be enabled; what is enabled already stays so. Nothing: it does.
std::optional<Failure> failedPolicy(const Extension& extension, const Settings& settings);

} // namespace simulator
