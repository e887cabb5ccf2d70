#pragma once

#include <string>
#include <type_traits>

#include "automation/object_model/bind.h"
#include "device/keyed_collection.h"

namespace zentrel::objects {

/// The class of what a collection holds; each class's own file defines its own.
template<typename T>
const ClassTable* ClassOf();

template<typename T>
concept PlainItem = std::is_same_v<T, int> || std::is_same_v<T, std::string>;

namespace detail {

template<typename T>
struct CollectionClass {
    using Collection = KeyedCollection<T>;

    static Value Wrap(const std::shared_ptr<T>& item) {
        if constexpr (PlainItem<T>) {
            return Value(*item);
        } else {
            return ObjectRef(*ClassOf<T>(), item);
        }
    }
    static int PositionOf(const Collection& items, const Value& index) {
        if (const auto* key = index.If<std::string>()) {
            if (const int position = items.PositionOf(*key)) return position;
            throw NotFound(items.name(), *key);
        }
        return ToInt32(index);
    }
    static Value Item(Collection& items, const Value& index) {
        return Wrap(items.Share(PositionOf(items, index)));
    }
    static void Add(Collection& items, const Value& item, std::optional<std::string> key) {
        items.Add(std::make_shared<T>(Convert<T>::In(item)), key.value_or(std::string()));
    }
    static void Remove(Collection& items, const Value& index) {
        items.Remove(PositionOf(items, index));
    }

    static const ClassTable& Table() {
        static const ClassTable table("Collection", Members(), Traits());
        return table;
    }

  private:
    static std::vector<Member> Members() {
        std::vector<Member> members{Routine<&Item>("Item", {"Index"}),
                                    ReadOnly<&Collection::Count>("Count")};
        if constexpr (!PlainItem<T>) {
            members.front().gives = &ClassOf<T>;
            members.front().type = Type::Object;
        }
        if constexpr (std::is_same_v<T, std::string>) {
            members.push_back(Routine<&Add>("Add", {"Item", "Key"}));
            members.push_back(Routine<&Remove>("Remove", {"Index"}));
        }
        return members;
    }
    static ClassTable::Traits Traits() {
        Walk walk;
        walk.count = [](const ObjectRef& object) { return object.As<Collection>().Count(); };
        walk.item = [](const ObjectRef& object, int position) {
            return Wrap(object.As<Collection>().Share(position));
        };
        walk.key = [](const ObjectRef& object, int position) {
            return object.As<Collection>().KeyAt(position);
        };
        return {.defaultMember = "Item", .walk = walk};
    }
};

} // namespace detail

/// A keyed collection as outsiders see it: `Item` by key or position from 1 (the default member),
/// `Count`, and a walk in order. One of texts takes new entries from outside too.
template<typename T>
const ClassTable* CollectionOf() {
    return &detail::CollectionClass<T>::Table();
}

} // namespace zentrel::objects
