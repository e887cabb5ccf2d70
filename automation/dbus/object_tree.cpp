#include "automation/dbus/object_tree.h"

#include <algorithm>

#include "automation/dbus/path_names.h"

namespace zentrel::dbus {
namespace {

using objects::Member;
using objects::ObjectRef;
using objects::Value;

constexpr std::string_view kItem = "Item";

ObjectRef ObjectIn(const Value& value) {
    const auto* object = value.If<ObjectRef>();
    return object != nullptr ? *object : ObjectRef();
}

// The thing of a collection under a key or position; empty when there is none, or when what it
// holds are plain values.
ObjectRef ItemOf(const ObjectRef& collection, Value index) {
    try {
        return ObjectIn(objects::Read(collection, kItem, {std::move(index)}));
    } catch (const NotFound&) {
        return {};
    }
}

std::string ElementOf(const ObjectRef& collection, int position) {
    const std::string key = collection.table().traits().walk->key(collection, position);
    return key.empty() ? std::to_string(position) : PathElement(key);
}

} // namespace

// The device that a block names as its parent lies above it, not below.
bool ObjectTree::IsBranch(const Member& member) const {
    return member.kind == Member::Kind::Property && member.gives != nullptr &&
           member.parameters.empty() && member.gives() != &root_.table();
}

ObjectRef ObjectTree::Child(const ObjectRef& parent, std::string_view element) const {
    if (!parent.table().traits().walk) {
        const auto found = parent.table().Find(element);
        if (!found) return {};
        const Member& member = parent.table().members()[*found];
        if (member.name != element || !IsBranch(member)) return {};
        return ObjectIn(objects::Read(parent, member));
    }
    if (const int position = PositionIn(element)) return ItemOf(parent, position);
    ObjectRef item = ItemOf(parent, NameOf(element));
    // An underscore of the name itself, written as it is.
    return item ? item : ItemOf(parent, std::string(element));
}

ObjectRef ObjectTree::Find(std::string_view path) const {
    if (!path.starts_with(path_)) return {};
    path.remove_prefix(path_.size());
    ObjectRef object = root_;
    while (object && !path.empty()) {
        if (path.front() != '/') return {};
        path.remove_prefix(1);
        const auto end = std::min(path.find('/'), path.size());
        object = Child(object, path.substr(0, end));
        path.remove_prefix(end);
    }
    return object;
}

std::vector<std::string> ObjectTree::Children(const ObjectRef& object) const {
    std::vector<std::string> children;
    const auto& walk = object.table().traits().walk;
    if (!walk) {
        for (const Member& member : object.table().members()) {
            if (IsBranch(member)) children.emplace_back(member.name);
        }
        return children;
    }
    for (int position = 1; position <= walk->count(object); ++position) {
        if (ObjectIn(walk->item(object, position))) {
            children.push_back(ElementOf(object, position));
        }
    }
    return children;
}

std::string ObjectTree::PathOf(const ObjectRef& object) const {
    if (object == root_) return path_;
    for (const Member& member : root_.table().members()) {
        if (!IsBranch(member)) continue;
        const ObjectRef branch = ObjectIn(objects::Read(root_, member));
        std::string path = path_ + "/" + std::string(member.name);
        if (branch == object) return path;
        const auto& walk = branch.table().traits().walk;
        for (int position = 1; walk && position <= walk->count(branch); ++position) {
            const ObjectRef item = ObjectIn(walk->item(branch, position));
            if (!item || &item.table() != &object.table()) break;
            if (item == object) return path + "/" + ElementOf(branch, position);
        }
    }
    return path_;
}

void ObjectTree::Walk(const std::string& path, const ObjectRef& object, const Visit& visit) const {
    visit(path, object);
    for (const std::string& element : Children(object)) {
        std::string below = path;
        below.append("/").append(element);
        Walk(below, Child(object, element), visit);
    }
}

} // namespace zentrel::dbus
