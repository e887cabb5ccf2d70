#pragma once

#include <functional>
#include <set>
#include <string>

#include <QStringList>
#include <QTimer>

#include "automation/object_model/classes.h"

namespace zentrel {
namespace dbus {

class Reception;

/// Tells callers what goes over the wire, a line for each record, in batches. Lines are made only
/// while somebody follows.
class WireFeed {
  public:
    /// More lines than this in one batch are left out and counted: a burst outruns every reader.
    static constexpr int kBatch = 2000;

    explicit WireFeed(const Reception& reception);

    // The caller begins to follow, and ends it.
    void Follow();
    void Unfollow();

    void Leave(const std::string& caller);
    /// All have gone.
    void Forget();
    bool Holds(const std::string& caller) const { return followers_.contains(caller); }
    bool followed() const { return !followers_.empty(); }

    /// What went over the wire just now; `line` is asked only when the batch has room.
    void Take(const std::function<std::string()>& line);

    /// Runs when the first follower comes and when the last one has gone.
    std::function<void(bool followed)> Followed;
    /// Runs ahead of a batch: what is half heard is completed.
    std::function<void()> BeforeBatch;
    std::function<void(const std::string& follower, const QStringList& lines, int leftOut)> Send;

  private:
    void SendBatch();

    const Reception& reception_;
    std::set<std::string> followers_;
    QStringList lines_;
    int leftOut_ = 0;
    QTimer batch_;
};

} // namespace dbus

namespace objects {
template<>
const ClassTable* ClassOf<dbus::WireFeed>();
} // namespace objects

} // namespace zentrel
