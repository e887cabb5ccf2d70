#include "automation/dbus/failure.h"

#include <new>

#include "automation/object_model/class_table.h"
#include "screens/qt/model_text.h"
#include "setups/setup_file.h"

namespace zentrel::dbus {
namespace {

Failure Standard(const char* name, const std::exception& thrown) {
    return {QLatin1String("org.freedesktop.DBus.Error.") + QLatin1String(name),
            view::FromModel(thrown.what())};
}

struct Name {
    bool (*is)(const std::exception*);
    const char* name;
};

bool IsFileAccess(const std::exception* thrown) {
    constexpr int kFileAccess = 75;
    const auto* error = dynamic_cast<const Error*>(thrown);
    return error != nullptr && error->number() == kFileAccess;
}

template<typename T>
Name Of(const char* name) {
    return {[](const std::exception* thrown) { return dynamic_cast<const T*>(thrown) != nullptr; },
            name};
}

// The first that fits holds.
const Name kNames[] = {
    Of<NotFound>("NotFound"),           Of<DuplicateKey>("DuplicateKey"),
    Of<Overflow>("Overflow"),           Of<OutOfRange>("OutOfRange"),
    Of<TypeMismatch>("TypeMismatch"),   Of<EndlessReference>("OutOfStackSpace"),
    Of<ScriptFailure>("ScriptFailure"), Of<SetupFileError>("SetupFile"),
    {&IsFileAccess, "FileAccess"},      Of<std::exception>("Failed"),
};

Failure Named(const std::exception& thrown) {
    for (const Name& one : kNames) {
        if (one.is(&thrown)) {
            return {QLatin1String("org.zentrel.Error.") + QLatin1String(one.name),
                    view::FromModel(thrown.what())};
        }
    }
    return {};
}

} // namespace

Failure FailureOf(const std::exception_ptr& thrown) {
    try {
        std::rethrow_exception(thrown);
    } catch (const BadCall& call) {
        return Standard(call.name(), call);
    } catch (const objects::NoSuchMember& member) {
        return Standard("UnknownMethod", member);
    } catch (const objects::WrongArguments& arguments) {
        return Standard("InvalidArgs", arguments);
    } catch (const objects::WrongType& type) {
        return Standard("InvalidArgs", type);
    } catch (const objects::WrongAccess& access) {
        return Standard("AccessDenied", access);
    } catch (const std::bad_alloc& memory) {
        return Standard("NoMemory", memory);
    } catch (const std::exception& other) {
        return Named(other);
    } catch (...) {
        return Named(std::runtime_error("Something failed that has no name"));
    }
}

} // namespace zentrel::dbus
