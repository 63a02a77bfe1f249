#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform {

/// The text of a property list's value; none if the value is not text.
using InfoValue = std::optional<std::string>;
/// The values of an Info.plist, by key.
using InfoDictionary = std::map<std::string, InfoValue>;

/// A bundle on disk. Its information dictionary is read once, on construction. Cheap to copy.
class NSBundle {
public:
    /// The bundle that holds the running application.
    static const NSBundle& mainBundle();

    /// `dictionary` may be null; `problem` then says why, in a few words.
    NSBundle(std::string infoFile, std::shared_ptr<const InfoDictionary> dictionary, std::string problem,
             std::string resourcePath)
        : infoFile_{std::move(infoFile)},
          dictionary_{std::move(dictionary)},
          problem_{std::move(problem)},
          resourcePath_{std::move(resourcePath)} {}

    /// Null if the bundle has none or it cannot be read; infoProblem() then says why.
    const InfoDictionary* infoDictionary() const { return dictionary_.get(); }
    /// The path of the Info.plist, even if it does not exist.
    const std::string& infoFile() const { return infoFile_; }
    const std::string& infoProblem() const { return problem_; }
    /// The folder of the images.
    const std::string& resourcePath() const { return resourcePath_; }

private:
    std::string infoFile_;
    std::shared_ptr<const InfoDictionary> dictionary_;
    std::string problem_;
    std::string resourcePath_;
};

} // namespace platform
