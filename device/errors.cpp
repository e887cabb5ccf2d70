#include "device/errors.h"

namespace zentrel {

NotFound::NotFound(std::string_view collection, std::string_view key)
    : Error(5, "There is no \"" + std::string(key) + "\" in " + std::string(collection)),
      collection_(collection), key_(key) {}

DuplicateKey::DuplicateKey(std::string_view collection, std::string_view key)
    : Error(457, "\"" + std::string(key) + "\" stands in " + std::string(collection) + " already") {
}

} // namespace zentrel
