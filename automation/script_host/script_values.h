#pragma once

#include "automation/object_model/value.h"
#include "automation/vbscript/vbscript.h"

namespace zentrel {

// Values between the interpreter and the object model. Both ways are exact but for the
// language's Currency and Date, which the program knows as numbers.

/// Throws ScriptError for what no member can take: Null (94), an error value or an array of
/// several dimensions (13). An object that isn't the program's stands for its default value.
objects::Value FromScript(const vbscript::Value& value);

/// An object comes as a host object that scripts can use.
vbscript::Value ToScript(const objects::Value& value);

} // namespace zentrel
