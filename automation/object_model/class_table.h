#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/object_model/value.h"
#include "device/errors.h"

namespace zentrel::objects {

/// A member that a class doesn't have, or that can't be used that way. Number 438.
class NoSuchMember : public Error {
  public:
    NoSuchMember(std::string_view className, std::string_view member);
};

/// A property that only reads or only writes, used the other way; `what` says which. Number 438.
class WrongAccess : public Error {
  public:
    WrongAccess(std::string_view className, std::string_view member, std::string_view what);
};

/// Too many arguments, or one missing that has to be there. Number 450.
class WrongArguments : public Error {
  public:
    WrongArguments(std::string_view className, std::string_view member);
};

/// A value of a kind that can't become what the member takes. Number 13.
class WrongType : public Error {
  public:
    WrongType(Type wanted, std::string_view got);
};

struct Parameter {
    std::string_view name;
    Type type = Type::Any;
    bool optional = false;
    bool byReference = false; ///< The member may change it; the caller sees the change.
};

/// The arguments of one call, in order. Those by reference hold the changed value after it.
using Arguments = std::span<Value>;

class ClassTable;

/// One public member of a class. A property reads, writes, or both; a routine has `read` alone.
struct Member {
    enum class Kind : std::uint8_t { Property, Routine };

    std::string_view name;
    Kind kind = Kind::Property;
    Type type = Type::None; ///< Of the value that it gives or takes.
    std::vector<Parameter> parameters;
    Value (*read)(const Member&, const ObjectRef&, Arguments) = nullptr;
    void (*write)(const Member&, const ObjectRef&, Arguments, const Value&) = nullptr;
    /// The class of the object it gives, where that is always the same.
    const ClassTable* (*gives)() = nullptr;
    const void* detail = nullptr; ///< What a `read` shared by many members looks up by.

    /// How many arguments must be there.
    std::size_t required() const;
};

/// How a class of objects is walked: by position from 1, each with its key (empty: none).
struct Walk {
    int (*count)(const ObjectRef&) = nullptr;
    Value (*item)(const ObjectRef&, int position) = nullptr;
    std::string (*key)(const ObjectRef&, int position) = nullptr;
};

/// The public members of one class, in their declared order.
class ClassTable {
  public:
    struct Traits {
        std::string_view defaultMember{}; ///< Stands for the object where a value is wanted.
        std::optional<Walk> walk{};       ///< The class is a collection.
        /// Finds the object anew from what references hold; throws when it has gone.
        void* (*resolve)(void* place) = nullptr;
    };

    ClassTable(std::string_view name, std::vector<Member> members, Traits traits);
    ClassTable(std::string_view name, std::vector<Member> members)
        : ClassTable(name, std::move(members), Traits{}) {}

    std::string_view name() const { return name_; }
    const std::vector<Member>& members() const { return members_; }
    const Traits& traits() const { return traits_; }
    /// Position in `members`, letters in any case; nothing when there is none of that name.
    std::optional<std::size_t> Find(std::string_view name) const;
    std::optional<std::size_t> defaultMember() const { return default_; }
    /// The member itself; throws NoSuchMember.
    const Member& At(std::string_view name) const;

  private:
    std::string_view name_;
    std::vector<Member> members_;
    Traits traits_;
    std::vector<std::size_t> byName_;
    std::optional<std::size_t> default_;
};

// Using a member. Each checks that the member can be used that way and counts the arguments;
// what the member itself throws passes through.
Value Read(const ObjectRef& object, const Member& member, Arguments arguments = {});
void Write(const ObjectRef& object, const Member& member, Arguments arguments, const Value& value);

// The same by name.
Value Read(const ObjectRef& object, std::string_view member, std::vector<Value> arguments = {});
void Write(const ObjectRef& object, std::string_view member, const Value& value);

} // namespace zentrel::objects
