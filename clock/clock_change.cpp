#include "clock/clock_change.h"

#include "clock/clk_dist.h"
#include "device/part.h"
#include "synth/panel_change.h"
#include "transport/load_path.h"

namespace zentrel {

bool ChangeModel(cClkDist& block, std::string_view element, const std::function<void()>& change) {
    cPart& part = block.Part();
    try {
        if (block.LinkedPLL() != nullptr) {
            AllOrNothing(part, block.LinkedPLLInt, change);
        } else {
            part.journal().Attempt(block.ID(), [&] {
                change();
                return true;
            });
        }
        return true;
    } catch (const ScriptFailure&) {
        part.UpdateDisplays(); // What was written before the hook failed stands.
        throw;
    } catch (const Error& error) {
        TellFailedElement(part, element, error);
        return false;
    }
}

void LoadIfAutomatic(cPart& part) {
    if (part.upward().options->AutoReloadWithChanges()) LoadChanges(part);
}

} // namespace zentrel
