#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "device/errors.h"
#include "device/text.h"

namespace zentrel {

/// An ordered collection of shared objects: positions count from 1, look-ups by key don't regard
/// case, a key can stand once. An item may have no key. A look-up that finds nothing throws
/// NotFound with the collection's name and the key.
template<typename T>
class KeyedCollection {
  public:
    using Item = std::shared_ptr<T>;

    explicit KeyedCollection(std::string name) : name_(std::move(name)) {}

    const std::string& name() const { return name_; }
    int Count() const { return static_cast<int>(items_.size()); }
    bool empty() const { return items_.empty(); }

    /// Adds at the end. Throws DuplicateKey and adds nothing when the key stands already.
    void Add(Item item, const std::string& key = {}) {
        if (!key.empty() && !byKey_.try_emplace(key, items_.size()).second) {
            throw DuplicateKey(name_, key);
        }
        items_.push_back(std::move(item));
        keys_.push_back(key);
    }

    /// Adds ahead of position `before`, or at the end when there is no such position.
    void Insert(Item item, int before, const std::string& key = {}) {
        if (before < 1 || before > Count()) {
            Add(std::move(item), key);
            return;
        }
        if (!key.empty() && byKey_.contains(key)) throw DuplicateKey(name_, key);
        items_.insert(items_.begin() + (before - 1), std::move(item));
        keys_.insert(keys_.begin() + (before - 1), key);
        Reindex();
    }

    /// Takes position `position` out; a position that isn't there is an error.
    void Remove(int position) {
        Check(position);
        items_.erase(items_.begin() + (position - 1));
        keys_.erase(keys_.begin() + (position - 1));
        Reindex();
    }

    void Clear() {
        items_.clear();
        keys_.clear();
        byKey_.clear();
    }

    T& operator()(int position) const {
        Check(position);
        return *items_[static_cast<std::size_t>(position - 1)];
    }
    T& operator()(std::string_view key) const {
        if (T* item = Find(key)) return *item;
        throw NotFound(name_, key);
    }

    /// The item of that key, or nothing.
    T* Find(std::string_view key) const {
        const auto found = byKey_.find(key);
        return found == byKey_.end() ? nullptr : items_[found->second].get();
    }
    /// The position of that key, or 0.
    int PositionOf(std::string_view key) const {
        const auto found = byKey_.find(key);
        return found == byKey_.end() ? 0 : static_cast<int>(found->second) + 1;
    }
    bool Contains(std::string_view key) const { return byKey_.contains(key); }
    const std::string& KeyAt(int position) const {
        Check(position);
        return keys_[static_cast<std::size_t>(position - 1)];
    }
    /// The shared object itself, for a holder that may outlive the collection's entry.
    const Item& Share(int position) const {
        Check(position);
        return items_[static_cast<std::size_t>(position - 1)];
    }

    /// Iterates in order, as references.
    class Iterator {
      public:
        explicit Iterator(typename std::vector<Item>::const_iterator at) : at_(at) {}
        T& operator*() const { return **at_; }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return at_ != other.at_; }

      private:
        typename std::vector<Item>::const_iterator at_;
    };
    Iterator begin() const { return Iterator(items_.begin()); }
    Iterator end() const { return Iterator(items_.end()); }

  private:
    void Check(int position) const {
        if (position < 1 || position > Count()) throw NotFound(name_, std::to_string(position));
    }
    void Reindex() {
        byKey_.clear();
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            if (!keys_[i].empty()) byKey_.emplace(keys_[i], i);
        }
    }

    std::string name_;
    std::vector<Item> items_;
    std::vector<std::string> keys_;
    std::unordered_map<std::string, std::size_t, NoCaseHash, NoCaseEqual> byKey_;
};

} // namespace zentrel
