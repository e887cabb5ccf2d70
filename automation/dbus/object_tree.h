#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/object_model/class_table.h"

namespace zentrel::dbus {

/// Which object stands at which path.
class Paths {
  public:
    virtual ~Paths() = default;
    /// The object at a path; empty when it leads nowhere.
    virtual objects::ObjectRef Find(std::string_view path) const = 0;
    /// The path of an object.
    virtual std::string PathOf(const objects::ObjectRef& object) const = 0;
};

/// Objects as a tree of paths below a root: a collection lies under its name, what it holds under
/// its key (`PrgmBits/N`) and, besides, under its position (`PrgmBits/3`). It keeps nothing: paths
/// are followed anew at each use, so one that is kept over a change of device leads to the new
/// device's object of that name, or nowhere.
class ObjectTree : public Paths {
  public:
    ObjectTree(std::string path, objects::ObjectRef root)
        : path_(std::move(path)), root_(std::move(root)) {}

    const std::string& path() const { return path_; }
    const objects::ObjectRef& root() const { return root_; }

    objects::ObjectRef Find(std::string_view path) const override;
    /// The root's own path for an object that the tree doesn't hold.
    std::string PathOf(const objects::ObjectRef& object) const override;
    /// The path elements below an object, in order: each thing once, by its key if it has one.
    std::vector<std::string> Children(const objects::ObjectRef& object) const;
    /// Walks the object at a path and all below it.
    using Visit = std::function<void(const std::string& path, const objects::ObjectRef& object)>;
    void Walk(const std::string& path, const objects::ObjectRef& object, const Visit& visit) const;

  private:
    objects::ObjectRef Child(const objects::ObjectRef& parent, std::string_view element) const;
    bool IsBranch(const objects::Member& member) const;

    std::string path_;
    objects::ObjectRef root_;
};

} // namespace zentrel::dbus
