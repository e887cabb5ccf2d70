#pragma once

#include <exception>
#include <functional>
#include <string_view>

namespace zentrel {

class FrmPart;

/// When a call is served while something holds the thread. A message box and a script hold every
/// call up; a running burst serves some in the pause between two passes.
enum class Turn {
    Now,       ///< At once, whatever holds the thread: it touches nothing of the model.
    Pause,     ///< In the pause too: it reads, it stops the run, or it does nothing during one.
    StopFirst, ///< Asks the run to stop, and goes on when it has ended.
    Idle,      ///< Waits until nothing holds the thread.
};

/// The turn of an operation or of a routine of the device, by its exact name.
Turn TurnOf(std::string_view operation);

/// Where calls of other programs come in, each in its turn.
class CallDoor {
  public:
    using Call = std::function<void()>;
    /// Hears how a call ended: null, or what it threw.
    using Done = std::function<void(std::exception_ptr failure)>;

    explicit CallDoor(FrmPart& frm) : frm_(frm) {}

    /// Runs `call` now, or when its turn has come; then `done`, which throws nothing.
    void Admit(Turn turn, const Call& call, const Done& done);

  private:
    void Serve(const Call& call, const Done& done);

    FrmPart& frm_;
};

} // namespace zentrel
