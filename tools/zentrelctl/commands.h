#pragma once

#include <stdexcept>

#include <QString>
#include <QStringList>
#include <QVariant>

#include "tools/zentrelctl/program_calls.h"

namespace zentrel::ctl {

/// A command line that can't be understood.
class BadUsage : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What each command does with the program. All give what there is to print: nothing, one value,
/// or a list when a call answers with several.
class Commands {
  public:
    explicit Commands(const ProgramCalls& program) : program_(program) {}

    /// One of the program's operations; `words` are its arguments. The last form that takes as
    /// many is used.
    QVariant Operation(const QString& name, const QStringList& words) const;
    /// `Part.PrgmBits("N").Value`: a property, what a method gives, all properties of an object,
    /// or the keys of a collection.
    QVariant Get(const QString& expression) const;
    void Set(const QString& expression, const QString& word) const;
    /// A routine; further words are arguments behind those in parentheses.
    QVariant Call(const QString& expression, const QStringList& words) const;
    /// The operations, or the members of what an expression leads to, with their types.
    QStringList List(const QString& expression) const;
    /// What the argument at `position` of an operation may be by the device's names. Never starts
    /// the program.
    QStringList Names(const QString& operation, int position) const;

  private:
    struct Place;
    Place Locate(const QString& expression) const;
    QVariant CallAt(const QString& path, const Node& node, const QString& name,
                    const QStringList& words, const std::vector<bool>& quoted) const;
    QVariant Contents(const QString& path, const Node& node) const;
    QStringList Keys(const QString& collection) const;

    const ProgramCalls& program_;
};

} // namespace zentrel::ctl
