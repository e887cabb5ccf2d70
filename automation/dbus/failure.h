#pragma once

#include <exception>
#include <stdexcept>
#include <string>

#include <QString>

namespace zentrel::dbus {

/// An error as the bus has it: a name of dots and the words.
struct Failure {
    QString name;
    QString text;
};

/// What any exception is to a caller. Failures of the model have names below `org.zentrel.Error`.
Failure FailureOf(const std::exception_ptr& thrown);

/// A call that can't be understood, under one of the bus's own names.
class BadCall : public std::runtime_error {
  public:
    /// `name` behind `org.freedesktop.DBus.Error.`: "UnknownMethod".
    BadCall(const char* name, const std::string& text) : std::runtime_error(text), name_(name) {}
    const char* name() const { return name_; }

  private:
    const char* name_;
};

} // namespace zentrel::dbus
