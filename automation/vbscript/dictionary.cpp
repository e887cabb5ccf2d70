#include "automation/vbscript/arrays.h"
#include "automation/vbscript/companions.h"
#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/member_table.h"
#include "automation/vbscript/objects.h"
#include "automation/vbscript/runtime.h"

#include <list>
#include <unordered_map>
#include <variant>

namespace zentrel::vbscript {
namespace {

enum Slot { kAdd, kCompareMode, kCount, kExists, kItem, kItems, kKey, kKeys, kRemove, kRemoveAll };

constexpr MemberRow kMembers[] = {
    {"Add", kAdd, true},       {"CompareMode", kCompareMode, false},
    {"Count", kCount, false},  {"Exists", kExists, true},
    {"Item", kItem, true},     {"Items", kItems, false},
    {"Key", kKey, true},       {"Keys", kKeys, false},
    {"Remove", kRemove, true}, {"RemoveAll", kRemoveAll, true},
};

/// A key as it is compared: numbers by value whatever their type, texts, objects by identity.
using Key = std::variant<std::monostate, std::nullptr_t, double, std::u16string, const Object*>;

struct KeyHash {
    std::size_t operator()(const Key& key) const {
        if (const auto* number = std::get_if<double>(&key)) return std::hash<double>()(*number);
        if (const auto* text = std::get_if<std::u16string>(&key))
            return std::hash<std::u16string>()(*text);
        if (const auto* object = std::get_if<const Object*>(&key))
            return std::hash<const Object*>()(*object);
        return key.index();
    }
};

struct Entry {
    Value key;
    Value item;
};

class KeyEnumerator : public Enumerator {
  public:
    explicit KeyEnumerator(std::vector<Value> keys) : keys_(std::move(keys)) {}
    std::optional<Value> Next() override {
        if (at_ == keys_.size()) return std::nullopt;
        return keys_[at_++];
    }

  private:
    std::vector<Value> keys_;
    std::size_t at_ = 0;
};

class Dictionary : public HostObject, public Tracked {
  public:
    explicit Dictionary(Runtime& runtime) { Track(runtime.tracked); }
    ~Dictionary() override { RemoveAll(); }

    std::string_view ClassName() const override { return "Dictionary"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }
    std::optional<Member> DefaultMember() const override { return Member{kItem, true}; }

    Value Get(int slot, Arguments args) override {
        switch (slot) {
        case kCount:
            return Value::Long(static_cast<std::int64_t>(entries_.size()));
        case kCompareMode:
            return Value::Long(ignore_case_ ? 1 : 0);
        case kItems:
            return All(&Entry::item);
        case kKeys:
            return All(&Entry::key);
        case kRemoveAll:
            RemoveAll();
            return {};
        case kAdd: {
            Expect(args, 2);
            const auto key = KeyOf(args[0]);
            if (index_.contains(key)) Raise(ErrorNumber::KeyExists);
            Insert(key, args[0], args[1]);
            return {};
        }
        default:
            break;
        }
        Expect(args, 1);
        const auto key = KeyOf(args[0]);
        const auto found = index_.find(key);
        switch (slot) {
        case kExists:
            return Value::Boolean(found != index_.end());
        case kRemove:
            Remove(found);
            return {};
        case kItem:
            // Reading an item that isn't there makes it.
            return found == index_.end() ? Insert(key, args[0], Value()).item : found->second->item;
        default:
            Raise(ErrorNumber::WrongArguments);
        }
    }

    void Set(int slot, Arguments args, const Value& value) override {
        switch (slot) {
        case kItem: {
            Expect(args, 1);
            const auto key = KeyOf(args[0]);
            const auto found = index_.find(key);
            if (found == index_.end())
                Insert(key, args[0], value);
            else
                found->second->item = value;
            return;
        }
        case kKey:
            Expect(args, 1);
            return Rename(args[0], value);
        case kCompareMode: {
            const auto mode = ToLong(value);
            if (!entries_.empty() || mode < 0 || mode > 2) Raise(ErrorNumber::InvalidCall);
            ignore_case_ = mode != 0;
            return;
        }
        default:
            Raise(ErrorNumber::NoSuchMember);
        }
    }
    void SetRef(int slot, Arguments args, const Value& value) override { Set(slot, args, value); }

    std::unique_ptr<Enumerator> Enumerate() override {
        std::vector<Value> keys;
        for (const auto& entry : entries_)
            keys.push_back(entry.key);
        return std::make_unique<KeyEnumerator>(std::move(keys));
    }

    void LetGo() override { RemoveAll(); }
    Object* Self() override { return this; }

  private:
    using Index = std::unordered_map<Key, std::list<Entry>::iterator, KeyHash>;
    static constexpr std::size_t kEntryBytes = 160;

    static void Expect(Arguments args, std::size_t count) {
        if (args.size() != count) Raise(ErrorNumber::WrongArguments);
    }

    Key KeyOf(const Value& value) const {
        switch (value.type()) {
        case Type::Empty:
            return std::monostate();
        case Type::Null:
            return nullptr;
        case Type::String:
            return ignore_case_ ? Lower(value.AsText()) : std::u16string(value.AsText());
        case Type::Object:
            return static_cast<const Object*>(value.AsObject());
        case Type::Array:
        case Type::Error:
            Raise(ErrorNumber::InvalidCall);
        default:
            return ToDouble(value);
        }
    }

    Entry& Insert(const Key& key, const Value& name, const Value& item) {
        memory::Charge(kEntryBytes);
        entries_.push_back({name, item});
        const auto last = std::prev(entries_.end());
        index_.emplace(key, last);
        return *last;
    }

    void Remove(Index::iterator found) {
        if (found == index_.end()) Raise(ErrorNumber::ElementNotFound);
        // The entry dies last: what it lets go of may look at this dictionary.
        std::list<Entry> doomed;
        doomed.splice(doomed.begin(), entries_, found->second);
        index_.erase(found);
        memory::Discharge(kEntryBytes);
    }

    void RemoveAll() {
        std::list<Entry> doomed;
        doomed.swap(entries_);
        index_.clear();
        memory::Discharge(kEntryBytes * doomed.size());
    }

    void Rename(const Value& from, const Value& to) {
        const auto found = index_.find(KeyOf(from));
        if (found == index_.end()) Raise(ErrorNumber::ElementNotFound);
        const auto key = KeyOf(to);
        if (index_.contains(key)) Raise(ErrorNumber::KeyExists);
        const auto entry = found->second;
        index_.erase(found);
        entry->key = to;
        index_.emplace(key, entry);
    }

    Value All(Value Entry::*what) const {
        std::vector<Value> values;
        for (const auto& entry : entries_)
            values.push_back(entry.*what);
        return Value::FromArray(ArrayData::FromValues(values).get());
    }

    std::list<Entry> entries_;
    Index index_;
    bool ignore_case_ = false;
};

} // namespace

Handle<HostObject> MakeDictionary(Runtime& runtime) {
    return Handle<HostObject>(new Dictionary(runtime));
}

Handle<HostObject> MakeCompanion(std::u16string_view name, Runtime& runtime) {
    if (CompareText(name, u"Scripting.Dictionary", true) == 0) return MakeDictionary(runtime);
    if (CompareText(name, u"VBScript.RegExp", true) == 0) return MakeRegExp(runtime);
    return nullptr;
}

} // namespace zentrel::vbscript
