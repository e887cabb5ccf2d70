#pragma once

#include <string>
#include <vector>

#include "automation/object_model/class_table.h"

namespace zentrel::objects {

/// An ordered list of texts as a collection without keys: `Item` by position from 1 (the default
/// member), `Count`, `Add`, `Remove`, and a walk in order.
ObjectRef RefToTexts(std::vector<std::string>& texts);

/// The texts of an array, or of anything that can be walked.
std::vector<std::string> TextsOf(const Value& value);

} // namespace zentrel::objects
