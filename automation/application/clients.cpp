#include "automation/application/clients.h"

#include <algorithm>

#include "session/frm_part.h"

namespace zentrel {

int Clients::Create(const std::string& owner) {
    owners_.emplace(++made_, owner);
    frm_.session.bOLEServer = true;
    frm_.Visible = true;
    return made_;
}

bool Clients::Release(const std::string& owner, int number) {
    const auto found = owners_.find(number);
    if (found == owners_.end() || found->second != owner) return false;
    owners_.erase(found);
    EndOfOne();
    return true;
}

void Clients::Leave(const std::string& owner) {
    if (std::erase_if(owners_, [&](const auto& held) { return held.second == owner; }) > 0) {
        EndOfOne();
    }
}

void Clients::Forget() {
    owners_.clear();
    frm_.session.bOLEServer = false;
}

bool Clients::Holds(const std::string& owner) const {
    return std::any_of(owners_.begin(), owners_.end(),
                       [&](const auto& held) { return held.second == owner; });
}

void Clients::EndOfOne() {
    if (!owners_.empty()) return;
    frm_.session.bOLEServer = false;
    // A run ends first. Whoever comes meanwhile keeps the window.
    frm_.burst.run.StopBurstCommands();
    frm_.guard.RunWhenIdle([this] {
        if (owners_.empty()) frm_.Unload();
    });
}

} // namespace zentrel
