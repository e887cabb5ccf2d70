#pragma once

#include <QObject>
#include <QStringList>

namespace zentrel::ctl {

class ProgramCalls;

/// Prints what goes over the wire, a line for each word, until the program or the bus ends.
class Watch : public QObject {
    Q_OBJECT
  public:
    /// `json`: each line as a JSON text.
    Watch(const ProgramCalls& program, bool json);
    void Run();

  private slots: // NOLINT(readability-redundant-access-specifiers): what the bus calls
    void Print(const QStringList& lines, int leftOut);

  private:
    const ProgramCalls& program_;
    bool json_;
};

} // namespace zentrel::ctl
