#pragma once

#include <functional>
#include <optional>
#include <tuple>
#include <type_traits>
#include <utility>

#include "automation/object_model/class_table.h"
#include "automation/object_model/convert.h"

/// Rows of class tables from C++ members, functions and lambdas. Types, optional arguments and
/// arguments that come back changed follow from the signature:
///   `T&`                 comes back changed,
///   `std::optional<T>`   may be left out,
///   `const ObjectRef&`   as first argument of a function or lambda: the object as it is held;
///                        `C&` there: the object itself.
namespace zentrel::objects {

namespace detail {

// One argument on its way from a Value to a C++ parameter of type P and back.
template<typename P>
struct Slot {
    using Plain = std::conditional_t<std::is_same_v<std::remove_cvref_t<P>, std::string_view>,
                                     std::string, std::remove_cvref_t<P>>;
    static constexpr bool kOptional = false;
    static constexpr bool kByReference =
        std::is_lvalue_reference_v<P> && !std::is_const_v<std::remove_reference_t<P>>;
    static constexpr Type kType = Convert<Plain>::kType;

    // What only comes back may be given as nothing yet.
    explicit Slot(const Value& value)
        : held(kByReference && value.IsEmpty() ? Plain() : Convert<Plain>::In(value)) {}
    P Get() { return static_cast<P>(held); }
    void Back(Value& value) const {
        if constexpr (kByReference) value = Convert<Plain>::Out(held);
    }
    Plain held;
};

template<typename T>
struct Slot<std::optional<T>> {
    using Inner = Slot<T>;
    static constexpr bool kOptional = true;
    static constexpr bool kByReference = false;
    static constexpr Type kType = Inner::kType;

    explicit Slot(const Value& value) {
        if (!value.IsEmpty()) inner.emplace(value);
    }
    std::optional<T> Get() {
        if (!inner) return std::nullopt;
        return inner->Get();
    }
    void Back(Value&) const {}
    std::optional<Inner> inner;
};

// Who the function works on, and its parameters behind that.
template<typename Self, typename R, typename... P>
struct Shape {
    using SelfArgument = Self;
    using Result = R;
    static constexpr std::size_t kCount = sizeof...(P);

    static std::vector<Parameter> Parameters(std::initializer_list<std::string_view> names) {
        std::vector<Parameter> parameters{
            Parameter{{}, Slot<P>::kType, Slot<P>::kOptional, Slot<P>::kByReference}...};
        std::size_t i = 0;
        for (const auto name : names)
            if (i < parameters.size()) parameters[i++].name = name;
        return parameters;
    }

    template<typename Function>
    static Value Call(const Function& function, const ObjectRef& object, Arguments arguments) {
        return CallWith(function, object, arguments, std::index_sequence_for<P...>());
    }

  private:
    static const Value& At(Arguments arguments, std::size_t index) {
        static const Value kLeftOut;
        return index < arguments.size() ? arguments[index] : kLeftOut;
    }

    template<typename Function, std::size_t... I>
    static Value CallWith(const Function& function, const ObjectRef& object,
                          [[maybe_unused]] Arguments arguments, std::index_sequence<I...>) {
        // Braces: the arguments convert from left to right, all before anything happens.
        std::tuple<Slot<P>...> slots{Slot<P>(At(arguments, I))...};
        const auto back = [&] {
            (..., (I < arguments.size() ? std::get<I>(slots).Back(arguments[I]) : void()));
        };
        if constexpr (std::is_void_v<R>) {
            Apply(function, object, std::get<I>(slots).Get()...);
            back();
            return {};
        } else {
            Value result = Convert<std::remove_cvref_t<R>>::Out(
                Apply(function, object, std::get<I>(slots).Get()...));
            back();
            return result;
        }
    }

    template<typename Function, typename... A>
    static decltype(auto) Apply(const Function& function, const ObjectRef& object, A&&... args) {
        if constexpr (std::is_same_v<std::remove_cvref_t<Self>, ObjectRef>) {
            return std::invoke(function, object, std::forward<A>(args)...);
        } else {
            return std::invoke(function, object.As<std::remove_cvref_t<Self>>(),
                               std::forward<A>(args)...);
        }
    }
};

template<typename F>
struct ShapeOf;
template<typename R, typename C, typename... P>
struct ShapeOf<R (C::*)(P...)> : Shape<C, R, P...> {};
template<typename R, typename C, typename... P>
struct ShapeOf<R (C::*)(P...) const> : Shape<C, R, P...> {};
template<typename R, typename Self, typename... P>
struct ShapeOf<R (*)(Self, P...)> : Shape<Self, R, P...> {};

// A lambda's own class isn't what it works on: its first parameter is.
template<typename M>
struct LambdaShape;
template<typename R, typename L, typename Self, typename... P>
struct LambdaShape<R (L::*)(Self, P...) const> : Shape<Self, R, P...> {};

template<typename F, bool lambda = std::is_class_v<F>>
struct AnyShape : ShapeOf<F> {};
template<typename F>
struct AnyShape<F, true> : LambdaShape<decltype(&F::operator())> {};

template<auto F>
using FunctionShape = AnyShape<std::remove_const_t<decltype(F)>>;

template<typename Result>
constexpr Type ResultType() {
    if constexpr (std::is_void_v<Result>) {
        return Type::None;
    } else {
        return Convert<std::remove_cvref_t<Result>>::kType;
    }
}

template<auto F>
Value ReadBy(const Member&, const ObjectRef& object, Arguments arguments) {
    return FunctionShape<F>::Call(F, object, arguments);
}

template<auto F>
void WriteBy(const Member&, const ObjectRef& object, Arguments, const Value& value) {
    static_assert(FunctionShape<F>::kCount == 1, "a property without arguments is set by one");
    Value copy = value;
    FunctionShape<F>::Call(F, object, Arguments(&copy, 1));
}

template<typename M>
struct FieldShape;
template<typename T, typename C>
struct FieldShape<T C::*> {
    using Object = C;
    using Content = T;
};

} // namespace detail

/// A routine; `names` are its arguments' names, for those who ask before they call.
template<auto F>
Member Routine(std::string_view name, std::initializer_list<std::string_view> names = {}) {
    using Shape = detail::FunctionShape<F>;
    Member member;
    member.name = name;
    member.kind = Member::Kind::Routine;
    member.type = detail::ResultType<typename Shape::Result>();
    member.parameters = Shape::Parameters(names);
    member.read = &detail::ReadBy<F>;
    return member;
}

/// A property that is read, with arguments where `Getter` takes some.
template<auto Getter>
Member ReadOnly(std::string_view name, std::initializer_list<std::string_view> names = {}) {
    Member member = Routine<Getter>(name, names);
    member.kind = Member::Kind::Property;
    return member;
}

template<auto Setter>
Member WriteOnly(std::string_view name) {
    Member member;
    member.name = name;
    member.type = detail::FunctionShape<Setter>::Parameters({}).front().type;
    member.write = &detail::WriteBy<Setter>;
    return member;
}

template<auto Getter, auto Setter>
Member Property(std::string_view name) {
    Member member = ReadOnly<Getter>(name);
    member.write = &detail::WriteBy<Setter>;
    return member;
}

/// The same with a getter that changes the object.
template<auto Getter, auto Setter>
Member ClearingProperty(std::string_view name) {
    Member member = Property<Getter, Setter>(name);
    member.readingChanges = true;
    return member;
}

/// A plain data member. `Class` is the class whose table this is, where a base of it has the
/// member.
template<auto F, typename Class = void>
Member Field(std::string_view name) {
    using Shape = detail::FieldShape<std::remove_const_t<decltype(F)>>;
    using Object = std::conditional_t<std::is_void_v<Class>, typename Shape::Object, Class>;
    using Content = typename Shape::Content;
    Member member;
    member.name = name;
    member.type = Convert<Content>::kType;
    member.read = [](const Member&, const ObjectRef& object, Arguments) -> Value {
        return Convert<Content>::Out(object.As<Object>().*F);
    };
    member.write = [](const Member&, const ObjectRef& object, Arguments, const Value& value) {
        object.As<Object>().*F = Convert<Content>::In(value);
    };
    return member;
}

/// A plain data member that outsiders can't write.
template<auto F>
Member ReadOnlyField(std::string_view name) {
    Member member = Field<F>(name);
    member.write = nullptr;
    return member;
}

/// A plain data member that outsiders can't read.
template<auto F>
Member WriteOnlyField(std::string_view name) {
    Member member = Field<F>(name);
    member.read = nullptr;
    return member;
}

/// A property that gives an object of always the same class: `Getter` gives an ObjectRef.
template<auto Getter>
Member Child(std::string_view name, const ClassTable* (*table)()) {
    Member member = ReadOnly<Getter>(name);
    member.gives = table;
    return member;
}

} // namespace zentrel::objects
