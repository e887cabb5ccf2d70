#pragma once

#include <map>
#include <string>

namespace zentrel {

class FrmPart;

/// Who holds an `Application` object. The first one brings the window up and keeps it; the end of
/// the last one unloads it. An owner is a connection, under whatever name the transport has for it.
class Clients {
  public:
    explicit Clients(FrmPart& frm) : frm_(frm) {}

    /// Makes an object of `owner` and gives its number, from 1 up and never again.
    int Create(const std::string& owner);
    /// Ends one; false when it isn't the owner's.
    bool Release(const std::string& owner, int number);
    /// The owner has gone, and all its objects end.
    void Leave(const std::string& owner);
    /// The transport itself has gone: nobody holds anything any more, and the window stays, since
    /// no client wanted an end.
    void Forget();

    bool Holds(int number) const { return owners_.contains(number); }
    bool Holds(const std::string& owner) const;
    const std::map<int, std::string>& owners() const { return owners_; }

  private:
    void EndOfOne();

    FrmPart& frm_;
    std::map<int, std::string> owners_; // by number
    int made_ = 0;
};

} // namespace zentrel
