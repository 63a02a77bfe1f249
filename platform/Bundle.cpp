#include "platform/Bundle.h"

#include <utility>

namespace platform {

NSBundle::NSBundle(std::string infoFile, std::shared_ptr<const InfoDictionary> dictionary, std::string problem,
                   std::string resourcePath)
    : infoFile_{std::move(infoFile)},
      dictionary_{std::move(dictionary)},
      problem_{std::move(problem)},
      resourcePath_{std::move(resourcePath)} {
}

} // namespace platform
