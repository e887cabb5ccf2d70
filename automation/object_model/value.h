#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// What outsiders see of the program: scripts inside it and programs beside it reach the same
/// objects by the same member names, and nothing here is made for one of them alone.
namespace zentrel::objects {

class ClassTable;

/// One object of the program as an outsider holds it: its class and the object. Empty is
/// "Nothing".
class ObjectRef {
  public:
    ObjectRef() = default;
    /// Shares the object: it stays whole while somebody holds this, wherever it was taken out of.
    ObjectRef(const ClassTable& table, std::shared_ptr<void> object)
        : table_(&table), object_(std::move(object)) {}
    /// For the objects that live as long as the program.
    template<typename T>
    static ObjectRef Unowned(const ClassTable& table, T& object) {
        return {table, std::shared_ptr<void>(std::shared_ptr<void>(), &object)};
    }

    explicit operator bool() const { return table_ != nullptr; }
    const ClassTable& table() const { return *table_; }
    /// The object itself. Throws what the class's resolver throws when the object has gone.
    template<typename T>
    T& As() const {
        return *static_cast<T*>(Resolve());
    }
    /// What the reference was made of: the object, or the place where a resolver looks for it.
    void* raw() const { return object_.get(); }

    bool operator==(const ObjectRef& other) const = default;

  private:
    void* Resolve() const;

    const ClassTable* table_ = nullptr;
    std::shared_ptr<void> object_;
};

struct Value;
using Array = std::vector<Value>;

/// A value on its way in or out. Empty is what an argument that was left out holds, and what a
/// routine without a result gives. Text is UTF-8.
struct Value {
    using Content = std::variant<std::monostate, bool, std::int16_t, std::int32_t, double,
                                 std::string, ObjectRef, Array>;

    Value() = default;
    template<typename T>
    requires std::is_constructible_v<Content, T&&> &&
        (!std::is_same_v<std::remove_cvref_t<T>, Value>)Value(T&& value)
        : content(std::forward<T>(value)) {}

    bool IsEmpty() const { return content.index() == 0; }
    template<typename T>
    const T* If() const {
        return std::get_if<T>(&content);
    }
    bool operator==(const Value& other) const = default;

    Content content;
};

/// What a member takes or gives. `Any` may be each of the others.
enum class Type : std::uint8_t {
    None,
    Boolean,
    Integer16,
    Integer32,
    Double,
    Text,
    Object,
    Doubles, ///< An array of numbers.
    Texts,   ///< An array of texts.
    Any,
};

} // namespace zentrel::objects
