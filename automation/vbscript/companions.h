#pragma once

#include "automation/vbscript/vbscript.h"

#include <string_view>

namespace zentrel::vbscript {

class Runtime;

/// The objects that CreateObject knows: "Scripting.Dictionary" and "VBScript.RegExp". Null for any
/// other name: a script reaches nothing else.
Handle<HostObject> MakeCompanion(std::u16string_view name, Runtime& runtime);

Handle<HostObject> MakeDictionary(Runtime& runtime);
Handle<HostObject> MakeRegExp(Runtime& runtime);

} // namespace zentrel::vbscript
