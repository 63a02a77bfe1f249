#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform {

/// The text of a property list's value; none where the value is no text: a number, a flag, a list.
using InfoValue = std::optional<std::string>;
/// What an Info.plist says, by key.
using InfoDictionary = std::map<std::string, InfoValue>;

/// A bundle on disk. It reads its information dictionary once, when it is made; a value, cheap to copy.
class NSBundle {
public:
    /// The bundle that holds the running application.
    static const NSBundle& mainBundle();

    /// A bundle with this dictionary; null where there is none, and `problem` then says why, in a few words.
    NSBundle(std::string infoFile, std::shared_ptr<const InfoDictionary> dictionary, std::string problem,
             std::string resourcePath)
        : infoFile_{std::move(infoFile)},
          dictionary_{std::move(dictionary)},
          problem_{std::move(problem)},
          resourcePath_{std::move(resourcePath)} {}

    /// Null if the bundle has none that can be read; infoProblem() then says why.
    const InfoDictionary* infoDictionary() const { return dictionary_.get(); }
    /// The path of the Info.plist, whether or not it is there.
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
