#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace zentrel::vbscript {

/// What a value is. The numbers are those that `VarType` reports; the last group never leaves the
/// interpreter.
enum class Type : std::uint8_t {
    Empty = 0,
    Null = 1,
    Integer = 2,
    Long = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    String = 8,
    Object = 9,
    Error = 10,
    Boolean = 11,
    Array = 12,
    ElementRef = 13, ///< an array element handed over by reference; keeps the array locked
    Procedure = 14,  ///< a procedure in a global slot
    Ref = 15,        ///< the address of a variable
    Unset = 16,      ///< a name that nothing has declared yet
    Byte = 17,
};

/// Base of what values share by reference: a count, and the last release ends it.
/// Single-threaded, as the language is.
class Counted { // NOLINT(cppcoreguidelines-virtual-class-destructor): Release ends it
  public:
    Counted() = default;
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    void Retain() { ++references_; }
    /// Chains of any length (lists of a million nodes) end without recursion.
    void Release() {
        if (--references_ == 0) Bury(this);
    }
    std::uint32_t References() const { return references_; }

  protected:
    virtual ~Counted() = default;
    /// Runs just before the end, with the count still able to rise: what must happen while the
    /// object is whole (a script's Class_Terminate).
    virtual void BeforeEnd() {}

  private:
    static void Bury(Counted* object);
    static void End(Counted* object);

    std::uint32_t references_ = 0;
};

/// A counted pointer.
template<class T>
class Handle {
  public:
    Handle() = default;
    Handle(std::nullptr_t) {}
    Handle(T* object) : object_(object) {
        if (object_) object_->Retain();
    }
    Handle(const Handle& other) : Handle(other.object_) {}
    Handle(Handle&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    template<class U>
    Handle(const Handle<U>& other) : Handle(other.get()) {}
    ~Handle() {
        if (object_) object_->Release();
    }
    Handle& operator=(Handle other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

  private:
    T* object_ = nullptr;
};

template<class T, class... Args>
Handle<T> Make(Args&&... args) {
    return Handle<T>(new T(std::forward<Args>(args)...));
}

/// The characters of a String value: UTF-16 units with room to grow behind them, so that
/// appending to a string that nobody else holds costs only what is appended.
class StringData {
  public:
    /// Throws error 7 when the string or the whole engine would grow beyond its limit.
    static StringData* New(std::size_t length, std::size_t capacity);
    void Retain() { ++references_; }
    void Release() {
        if (--references_ == 0) Delete(this);
    }
    bool Unique() const { return references_ == 1; }
    std::size_t Length() const { return length_; }
    std::size_t Capacity() const { return capacity_; }
    void SetLength(std::size_t length) { length_ = static_cast<std::uint32_t>(length); }
    char16_t* Chars() { return reinterpret_cast<char16_t*>(this + 1); }
    std::u16string_view View() { return {Chars(), length_}; }

  private:
    static void Delete(StringData* data);

    std::uint32_t references_ = 1;
    std::uint32_t length_ = 0;
    std::uint32_t capacity_ = 0;
};

class Object;
class ArrayData;
class ElementReference;
struct Procedure;

/// One value of the language: 16 bytes, a type and its content. Copying a String, Object or Array
/// shares it; arrays are copied when one of the sharers is written.
class Value {
  public:
    // One member of the union is the content; the check wants them all.
    // NOLINTBEGIN(cppcoreguidelines-pro-type-member-init)
    Value() noexcept : number_(0) {}
    Value(const Value& other) noexcept : type_(other.type_), number_(other.number_) {
        if (IsCounted()) RetainContent();
    }
    Value(Value&& other) noexcept : type_(other.type_), number_(other.number_) {
        other.type_ = Type::Empty;
        other.integer_ = 0;
    }
    // NOLINTEND(cppcoreguidelines-pro-type-member-init)
    Value& operator=(const Value& other) noexcept {
        if (IsCounted() || other.IsCounted()) {
            Value copy(other);
            Swap(copy);
        } else {
            type_ = other.type_;
            number_ = other.number_;
        }
        return *this;
    }
    Value& operator=(Value&& other) noexcept {
        Value taken(std::move(other));
        Swap(taken);
        return *this;
    }
    ~Value() {
        if (IsCounted()) ReleaseContent();
    }

    static Value Null() { return {Type::Null, 0}; }
    static Value Boolean(bool value) { return {Type::Boolean, value ? -1 : 0}; }
    static Value Byte(std::int64_t value) { return {Type::Byte, value}; }
    static Value Integer(std::int64_t value) { return {Type::Integer, value}; }
    static Value Long(std::int64_t value) { return {Type::Long, value}; }
    static Value Error(std::int64_t code) { return {Type::Error, code}; }
    /// In ten-thousandths.
    static Value Currency(std::int64_t scaled) { return {Type::Currency, scaled}; }
    static Value Single(double value) { return {Type::Single, value}; }
    static Value Double(double value) { return {Type::Double, value}; }
    /// Days since 30 December 1899, the fraction being the time of day.
    static Value Date(double serial) { return {Type::Date, serial}; }
    static Value String(std::u16string_view text);
    static Value Utf8(std::string_view text);
    static Value FromObject(Object* object);
    template<class T>
    static Value FromObject(const Handle<T>& object) {
        return FromObject(object.get());
    }
    static Value Nothing() { return FromObject(nullptr); }
    static Value FromArray(ArrayData* array);
    /// An argument that a call left out: `f(1, , 3)`.
    static Value Missing() { return Error(kMissingCode); }

    Type type() const { return type_; }
    bool IsEmpty() const { return type_ == Type::Empty; }
    bool IsNull() const { return type_ == Type::Null; }
    bool IsString() const { return type_ == Type::String; }
    bool IsObject() const { return type_ == Type::Object; }
    bool IsArray() const { return type_ == Type::Array; }
    bool IsMissing() const { return type_ == Type::Error && integer_ == kMissingCode; }
    /// Integer or Long, the types that arithmetic meets most.
    bool IsInteger() const { return (static_cast<unsigned>(type_) & ~1U) == 2; }

    /// Content of Integer, Long, Byte, Boolean (-1 or 0), Error and Currency (scaled).
    std::int64_t AsInteger() const { return integer_; }
    /// Content of Double, Single and Date.
    double AsDouble() const { return number_; }
    /// Content of a String; valid while the value lives unchanged.
    std::u16string_view AsText() const { return string_ ? string_->View() : std::u16string_view(); }
    /// Content of an Object; null for Nothing.
    Object* AsObject() const { return object_; }
    ArrayData* AsArray() const { return array_; }
    /// The array, made this value's own if it was shared.
    ArrayData* WritableArray();
    std::string ToUtf8() const; ///< Content of a String as UTF-8.

    /// Appends to a String value, in place where nobody shares it.
    void Append(std::u16string_view text);

    // A release may run a script that writes this very variable.
    void SetNumber(Type type, std::int64_t value) {
        while (IsCounted())
            ReleaseContent();
        type_ = type;
        integer_ = value;
    }
    void SetNumber(Type type, double value) {
        while (IsCounted())
            ReleaseContent();
        type_ = type;
        number_ = value;
    }
    void Clear() {
        while (IsCounted())
            ReleaseContent();
        type_ = Type::Empty;
        integer_ = 0;
    }
    /// Adopts a string whose one reference is handed over.
    static Value Adopt(StringData* data);

    // --- for the machine only ---
    static Value Unset() { return {Type::Unset, 0}; }
    static Value Ref(Value* variable);
    static Value FromElement(ElementReference* element);
    static Value FromProcedure(const Procedure* procedure);
    const Procedure* AsProcedure() const { return procedure_; }
    /// The variable behind a reference, or this value itself.
    const Value& Target() const {
        return type_ == Type::Ref || type_ == Type::ElementRef ? Follow() : *this;
    }
    Value& Target() {
        return type_ == Type::Ref || type_ == Type::ElementRef ? const_cast<Value&>(Follow())
                                                               : *this;
    }
    bool IsCounted() const { return (kCountedTypes >> static_cast<unsigned>(type_)) & 1U; }
    void Swap(Value& other) noexcept {
        std::swap(type_, other.type_);
        std::swap(integer_, other.integer_);
    }

  private:
    static constexpr std::int64_t kMissingCode = -2147352572;
    static constexpr unsigned kCountedTypes =
        1U << static_cast<unsigned>(Type::String) | 1U << static_cast<unsigned>(Type::Object) |
        1U << static_cast<unsigned>(Type::Array) | 1U << static_cast<unsigned>(Type::ElementRef);

    // NOLINTBEGIN(cppcoreguidelines-pro-type-member-init)
    Value(Type type, std::int64_t value) : type_(type), integer_(value) {}
    Value(Type type, int value) : type_(type), integer_(value) {}
    Value(Type type, double value) : type_(type), number_(value) {}
    // NOLINTEND(cppcoreguidelines-pro-type-member-init)
    const Value& Follow() const;
    void RetainContent() const noexcept;
    void ReleaseContent() noexcept;

    Type type_ = Type::Empty;
    union {
        std::int64_t integer_;
        double number_;
        StringData* string_;
        Object* object_;
        ArrayData* array_;
        ElementReference* element_;
        const Procedure* procedure_;
        Value* variable_;
    };
};

static_assert(sizeof(Value) == 16);

/// Any object of the language: the host's, a script class's instance, a built-in one.
class Object : public Counted {
  public:
    enum class Kind : std::uint8_t { Host, Instance, Procedure, Internal };
    Kind kind() const { return kind_; }

  protected:
    explicit Object(Kind kind) : kind_(kind) {}

  private:
    Kind kind_;
};

/// What the strings, arrays and objects of this thread's engines hold together, in bytes.
namespace memory {
/// Counts bytes in; throws error 7 beyond the limit.
void Charge(std::size_t bytes);
void Discharge(std::size_t bytes);
void SetLimit(std::size_t bytes);
} // namespace memory

/// The most UTF-16 units that a string may have.
inline constexpr std::size_t kMaxStringLength = std::size_t{1} << 27;

} // namespace zentrel::vbscript
