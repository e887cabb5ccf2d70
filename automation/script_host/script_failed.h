#pragma once

#include <string>

#include "automation/vbscript/vbscript.h"
#include "device/errors.h"

namespace zentrel {

/// A hook that failed: its text tells module, procedure, line, the line's text and the error.
class ScriptFailed : public ScriptFailure {
  public:
    explicit ScriptFailed(vbscript::ErrorInfo info);
    const vbscript::ErrorInfo& info() const { return info_; }

  private:
    vbscript::ErrorInfo info_;
};

/// The text of such a failure.
std::string FailureText(const vbscript::ErrorInfo& info);

} // namespace zentrel
