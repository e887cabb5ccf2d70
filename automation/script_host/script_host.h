#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "automation/vbscript/vbscript.h"
#include "device/upward.h"
#include "session/script_host.h"

namespace zentrel {

class FrmPart;

/// `ScriptControl1`: the scripts of the loaded part file. Loads and runs them, and shows them the
/// program as `Part` and `frmPart`.
class PartScripts final : public ScriptHost, public ScriptHooks {
  public:
    /// Connects itself with the session and the device.
    explicit PartScripts(FrmPart& form);
    ~PartScripts() override;
    PartScripts(const PartScripts&) = delete;
    PartScripts& operator=(const PartScripts&) = delete;

    /// Whether the engineer asks to interrupt the running script: Ctrl+Break, or Esc held for two
    /// seconds. Asked a few times a second once a script takes long; no other event runs then.
    std::function<bool()> BreakPressed;

    // Loading. A script that loads another device runs to its end in the engine that it began in.
    void Reset() override;
    void AddObject(std::string_view name) override;
    void AddModule(std::string_view name) override;
    /// Compiles, and runs what stands outside of procedures; both may fail.
    void AddCode(std::string_view module, std::string_view text) override;

    // Running. A failure is a ScriptFailed, a module or procedure that isn't there included.
    void ExecuteScript(std::string_view module, std::string_view procedure) override;
    bool HasModule(std::string_view module) const override;
    std::int16_t RunWithText(std::string_view module, std::string_view procedure,
                             std::string_view argument) override;

    /// Whether a script holds the thread.
    bool Running() const { return depth_ > 0; }

  private:
    using Clock = std::chrono::steady_clock;
    class Stay;

    std::unique_ptr<vbscript::Engine> MakeEngine();
    vbscript::Value Run(std::string_view module, std::string_view procedure,
                        std::span<vbscript::Value> arguments);
    vbscript::Module& Item(std::string_view module) const;
    int MessageBox(std::string_view prompt, int buttons, std::string_view title);
    bool Interrupted();

    FrmPart& form_;
    std::unique_ptr<vbscript::Engine> engine_;
    std::vector<std::unique_ptr<vbscript::Engine>> retired_; ///< Still running a script.
    int depth_ = 0;
    Clock::time_point nextLook_; ///< When to ask for the key again.
};

} // namespace zentrel
