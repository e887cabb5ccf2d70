#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace zentrel {

/// A failure that ends one operation and travels to the boundary it came in by: the event guard,
/// the script engine or the bus. `number()` is the number a script or a message shows.
class Error : public std::runtime_error {
  public:
    Error(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
    int number() const { return number_; }

  private:
    int number_;
};

/// A key or position that a collection doesn't hold. Number 5.
class NotFound : public Error {
  public:
    NotFound(std::string_view collection, std::string_view key);
    const std::string& collection() const { return collection_; }
    const std::string& key() const { return key_; }

  private:
    std::string collection_;
    std::string key_;
};

/// A key that a collection holds already. Number 457.
class DuplicateKey : public Error {
  public:
    DuplicateKey(std::string_view collection, std::string_view key);
};

/// A number too large for the integer that has to hold it. Number 6.
class Overflow : public Error {
  public:
    explicit Overflow(const std::string& what) : Error(6, "Overflow: " + what) {}
};

/// An index beyond a list. Number 9.
class OutOfRange : public Error {
  public:
    explicit OutOfRange(const std::string& what) : Error(9, "Out of range: " + what) {}
};

/// A text that should be a number and isn't. Number 13.
class TypeMismatch : public Error {
  public:
    explicit TypeMismatch(const std::string& what) : Error(13, "Not a number: " + what) {}
};

/// Fields that refer to each other in a ring. Number 28.
class EndlessReference : public Error {
  public:
    explicit EndlessReference(const std::string& what)
        : Error(28, "Out of stack space: " + what + " refers back to itself") {}
};

/// A hook that failed at run time. The words that were written before it stay: the change itself
/// was sound.
class ScriptFailure : public Error {
  public:
    using Error::Error;
};

} // namespace zentrel
