#include <cstdio>
#include <exception>

#include <QCoreApplication>
#include <QDBusConnection>

#include "tools/zentrelctl/commands.h"
#include "tools/zentrelctl/expression.h"
#include "tools/zentrelctl/json.h"
#include "tools/zentrelctl/text_values.h"
#include "tools/zentrelctl/watch.h"

using namespace zentrel::ctl;

namespace {

constexpr const char* kUsage =
    R"(Usage: zentrelctl [--json] COMMAND

  OPERATION [ARGUMENT...]      zentrelctl SetVCOFrequency PLL1 2450
  get EXPRESSION               zentrelctl get 'Part.PrgmBits("N").Value'
  set EXPRESSION VALUE         zentrelctl set 'Part.PrgmBits("N").Value' 245
  call EXPRESSION [ARGUMENT...]  zentrelctl call Part.LoadChanges
  list [EXPRESSION]            the operations, or the members of an object: list Part
  watch                        follows the words that go out, until Ctrl+C
  help, --version

Drives the running Zentrel, or starts one. Numbers have a point and no commas; &H7F is hexadecimal.
--json prints results as JSON. Exit status: 0 done, 1 the program answered with an error,
2 a command line that can't be understood, 3 no program to be had.
)";

enum Status { kDone = 0, kFailed = 1, kBadUsage = 2, kNoProgram = 3 };

void Print(const QVariant& value, bool json) {
    if (!value.isValid()) return;
    const QByteArray text = (json ? JsonOf(value) : WordFromValue(value)).toUtf8();
    std::printf("%s\n", text.constData());
}

Status Run(const Commands& commands, const ProgramCalls& program, const QStringList& words,
           bool json) {
    const QString command = words.value(0);
    const QStringList rest = words.mid(1);
    const auto wants = [&](qsizetype least, qsizetype most) {
        if (rest.size() < least || rest.size() > most) {
            throw BadUsage(command.toStdString() + ": see zentrelctl help");
        }
    };
    if (command == QLatin1String("get")) {
        wants(1, 1);
        Print(commands.Get(rest[0]), json);
    } else if (command == QLatin1String("set")) {
        wants(2, 2);
        commands.Set(rest[0], rest[1]);
    } else if (command == QLatin1String("call")) {
        wants(1, rest.size());
        Print(commands.Call(rest[0], rest.mid(1)), json);
    } else if (command == QLatin1String("list")) {
        wants(0, 1);
        Print(commands.List(rest.value(0)), json);
    } else if (command == QLatin1String("watch")) {
        wants(0, 0);
        Watch(program, json).Run();
    } else if (command == QLatin1String("names")) { // for the shell's completion
        wants(2, 2);
        Print(commands.Names(rest[0], rest[1].toInt()), json);
    } else {
        Print(commands.Operation(command, rest), json);
    }
    return kDone;
}

Status Failed(Status status, const QString& name, const std::string& text, bool json) {
    if (json) {
        const QVariantMap error{{QStringLiteral("error"), name},
                                {QStringLiteral("text"), QString::fromStdString(text)}};
        std::fprintf(stderr, "%s\n", JsonOf(error).toUtf8().constData());
    } else {
        const QByteArray head = name.isEmpty() ? QByteArray() : name.toUtf8() + ": ";
        std::fprintf(stderr, "zentrelctl: %s%s\n", head.constData(), text.c_str());
    }
    return status;
}

Status RunGuarded(const QStringList& words, bool json) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const ProgramCalls program(bus);
    try {
        if (!bus.isConnected()) throw NoProgram("there is no session bus here");
        return Run(Commands(program), program, words, json);
    } catch (const BadUsage& failure) {
        return Failed(kBadUsage, {}, failure.what(), json);
    } catch (const BadExpression& failure) {
        return Failed(kBadUsage, {}, failure.what(), json);
    } catch (const NoProgram& failure) {
        return Failed(kNoProgram, {}, failure.what(), json);
    } catch (const CallFailed& failure) {
        return Failed(kFailed, failure.name(), failure.what(), json);
    } catch (const std::exception& failure) {
        return Failed(kFailed, {}, failure.what(), json);
    }
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    QStringList words = QCoreApplication::arguments().mid(1);
    const bool json = words.removeAll(QStringLiteral("--json")) > 0;
    const QString first = words.value(0);
    if (first == QLatin1String("--version")) {
        std::printf("zentrelctl 4.2.1\n");
        return kDone;
    }
    if (first == QLatin1String("help") || first == QLatin1String("--help")) {
        std::printf("%s", kUsage);
        return kDone;
    }
    if (words.isEmpty()) {
        std::fprintf(stderr, "%s", kUsage);
        return kBadUsage;
    }
    return RunGuarded(words, json);
}
