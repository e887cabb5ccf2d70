#include <QRegularExpression>

#include "device/number_text.h"
#include "tests/automation_dbus/bus_fixture.h"

namespace zentrel {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct Step {
    const char* operation;
    QVariantList arguments;
    std::string told; // the first result, or the error's name
};

class CallsTest : public BusTest {
  protected:
    void Play(const std::vector<Step>& steps) {
        for (const Step& step : steps)
            EXPECT_EQ(client.Told(step.operation, step.arguments), step.told) << step.operation;
    }
    BusClient client;
};

const QString kPll = QStringLiteral("PLL1");
constexpr const char* kNotFound = "org.zentrel.Error.NotFound";
constexpr const char* kInvalid = "org.freedesktop.DBus.Error.InvalidArgs";

TEST_F(CallsTest, a_synthesiser_is_picked_tuned_loaded_and_looked_at) {
    Play({{"GetVersionID", {}, "Zentrel 4.2"},
          {"SelectPart", {QStringLiteral("QVX2874")}, ""},
          {"CheckPLLName", {kPll}, "true"},
          {"SetPDFrequency", {kPll, 10000.0}, ""},
          {"GetPDFrequency", {kPll}, "10000"},
          {"SetVCOFrequency", {kPll, 2450.5}, ""},
          {"GetVCOFrequency", {kPll}, "2450.5"},
          {"GetOUT0Frequency", {kPll}, "2450.5"},
          {"SetPrgmBits", {QStringLiteral("N_INT"), 200.0}, ""},
          {"GetPrgmBits", {QStringLiteral("N_INT")}, "200"},
          {"SetPrgmBitValue", {QStringLiteral("N_INT"), 120.5}, ""},
          {"GetPrgmBitValue", {QStringLiteral("n_int")}, "121"},
          {"SetPrgmBitsText", {QStringLiteral("DITHER"), QStringLiteral("strong")}, ""},
          {"GetPrgmBitsText", {QStringLiteral("DITHER")}, "Strong"},
          {"SetPrgmPins", {QStringLiteral("CE"), false, false}, ""},
          {"GetPrgmPins", {QStringLiteral("CE")}, "false"},
          {"SetPrgmPins", {QStringLiteral("CE"), true}, ""},
          {"SetAutoReload", {false}, ""},
          {"GetAutoReload", {}, "false"},
          {"SetCommMode", {QStringLiteral("usb")}, ""},
          {"SelectTab", {QStringLiteral("Bits/Pins")}, ""}});
    EXPECT_TRUE(program_->bench().board.PinHigh(5));
    EXPECT_EQ(frm().session.CommMode_Select, "USB");
    EXPECT_EQ(frm().tabPart.SelectedTab(), kBitsTab);
    program_->bench().board.ForgetHistory();
    Play({{"LoadReg", {Short(0)}, ""}, {"LoadPart", {}, ""}});
    EXPECT_EQ(program_->bench().board.history().size(), 7U);
}

TEST_F(CallsTest, a_clock_conditioner_is_read_back_and_its_burst_runs) {
    Play({{"SelectPart", {QStringLiteral("QVX4100")}, ""},
          {"GetLinkedPLL", {QStringLiteral("Clocks")}, "PLL"},
          {"SetExternalSourceFrequency", {QStringLiteral("Clocks"), 1900.0}, ""},
          {"GetExternalSourceFrequency", {QStringLiteral("Clocks")}, "1900"},
          {"LoadPart", {}, ""},
          {"ReadPrgmBits", {QStringLiteral("NONE")}, "-1"},
          {"AddBurst", {QStringLiteral("R0"), Short(0)}, ""},
          {"RunBurstOnce", {}, ""},
          {"DeleteBurst", {}, ""}});
    const double raw =
        client.Do("ReadRegisterRaw", {QStringLiteral("R0")}).arguments()[0].toDouble();
    const auto word = static_cast<std::uint32_t>(part().Registers("R0").Value());
    EXPECT_EQ(raw, word >> part().ControlLength);
}

TEST_F(CallsTest, a_changed_argument_comes_back_behind_the_result) {
    client.Do("SelectPart", {QStringLiteral("QVX2874")});
    EXPECT_EQ(client.Do("usbSetSPIDelay", {Short(300)}).arguments(), QVariantList{Short(255)});
    const QString path =
        client.Do("SaveSetup", {QStringLiteral("b.mac")}).arguments()[0].toString();
    EXPECT_TRUE(path.endsWith(QLatin1String("\\b.mac"))) << path.toStdString();
    EXPECT_EQ(client.Do("RestoreSetup", {QStringLiteral("b.mac")}).arguments()[0], path);
}

TEST_F(CallsTest, the_operations_tell_of_themselves_in_their_order_with_their_types) {
    const QString xml = QString::fromStdString(
        client.Text(client.Call(QLatin1String(kApp), QStringLiteral("Introspect"))));
    const qsizetype start = xml.indexOf(QLatin1String("org.zentrel.Application"));
    std::vector<std::string> names;
    auto found =
        QRegularExpression(QStringLiteral("<(?:method|property) name=\"(\\w+)\""))
            .globalMatch(xml.mid(start, xml.indexOf(QLatin1String("</interface>"), start) - start));
    while (found.hasNext()) {
        const std::string name = found.next().captured(1).toStdString();
        if (names.empty() || names.back() != name) names.push_back(name);
    }
    ASSERT_EQ(names.size(), 55U);
    EXPECT_EQ(names[0], "GetVersionID");
    EXPECT_EQ(names[31], "Part");
    EXPECT_EQ(names[54], "CheckPLLName");
    const auto signature = [&](const char* name) {
        QString at =
            xml.mid(xml.indexOf(QStringLiteral("method name=\"%1\"").arg(QLatin1String(name))));
        at.truncate(at.indexOf(QLatin1String("</method>")));
        std::string types;
        auto args = QRegularExpression(QStringLiteral("type=\"(\\w+)\" direction=\"(\\w+)\""))
                        .globalMatch(at);
        while (args.hasNext()) {
            const auto one = args.next();
            types += (types.empty() ? "" : " ") + one.captured(2).toStdString() + ":" +
                     one.captured(1).toStdString();
        }
        return types;
    };
    EXPECT_EQ(signature("SetPrgmBits"), "in:s in:d");
    EXPECT_EQ(signature("GetPrgmBits"), "in:s out:i");
    EXPECT_EQ(signature("GetPrgmBitsText"), "in:s out:v");
    EXPECT_EQ(signature("SetPrgmPins"), "in:s in:b");
    EXPECT_EQ(signature("AddBurst"), "in:s in:n");
    EXPECT_EQ(signature("RestoreSetup"), "in:s out:s");
    EXPECT_EQ(signature("usbSetSPIDelay"), "in:n out:n");
    EXPECT_EQ(xml.count(QLatin1String("method name=\"SetPrgmPins\"")), 2);
}

TEST_F(CallsTest, what_cannot_be_done_is_an_error_by_name_and_changes_nothing) {
    const QString none = QStringLiteral("NONE");
    for (const char* device : {"", "QVX2874"}) {
        if (*device != 0) client.Do("SelectPart", {QLatin1String(device)});
        Play({{"GetVCOFrequency", {none}, kNotFound},
              {"SetPrgmBits", {none, 1.0}, kNotFound},
              {"GetPrgmPins", {none}, kNotFound},
              {"SetVCOFrequency", {none, 1.0}, ""},
              {"GetExternalSourceFrequency", {none}, "-1"},
              {"GetLinkedPLL", {none}, "-1"},
              {"SetModeText", {none}, ""},
              {"LoadReg", {Short(-1)}, ""},
              {"LoadPart", {}, ""},
              {"LoadReg", {Short(32767)}, "org.zentrel.Error.Overflow"}});
    }
    const QDBusMessage missing = client.Do("GetVCOFrequency", {none});
    EXPECT_THAT(missing.errorMessage().toStdString(), AllOf(HasSubstr("PLLs"), HasSubstr("NONE")));
    Play({{"AddBurst", {QStringLiteral("R0"), Short(9)}, "org.zentrel.Error.OutOfRange"},
          {"AddBurst", {QStringLiteral("1,5"), Short(2)}, "org.zentrel.Error.TypeMismatch"},
          {"SetPrgmBitValue", {QStringLiteral("N_INT"), 1e12}, "org.zentrel.Error.Overflow"},
          {"SaveSetup", {QStringLiteral("/nowhere/at/all.mac")}, "org.zentrel.Error.FileAccess"},
          {"SaveSetup", {QStringLiteral("..")}, "org.zentrel.Error.FileAccess"},
          {"Nope", {}, "org.freedesktop.DBus.Error.UnknownMethod"}});
    EXPECT_EQ(client.Text(client.Call(QLatin1String(kApp), QStringLiteral("GetVersionID"), {},
                                      QStringLiteral("org.zentrel.Other"))),
              "org.freedesktop.DBus.Error.UnknownMethod");
}

TEST_F(CallsTest, arguments_are_checked_before_anything_changes) {
    client.Do("SelectPart", {QStringLiteral("QVX2874")});
    const QString field = QStringLiteral("N_INT");
    client.Do("SetPrgmBits", {field, 100.0});
    Play({{"SetPrgmBits", {field}, kInvalid},
          {"SetPrgmBits", {field, 5.0, 6.0}, kInvalid},
          {"SetPrgmBits", {field, QStringLiteral("5")}, kInvalid},
          {"SetPrgmBits", {field, true}, kInvalid},
          {"SetPrgmBits", {5.0, field}, kInvalid},
          {"SetPrgmPins", {QStringLiteral("CE"), 1}, kInvalid},
          {"AddBurst", {QStringLiteral("R0"), 70000}, kInvalid},
          {"AddBurst", {QStringLiteral("R0"), 0.5}, kInvalid},
          {"LoadPart", {QStringLiteral("now")}, kInvalid},
          {"GetPrgmBits", {QStringList{field}}, kInvalid},
          {"GetPrgmBits", {field}, "100"}});
    // Numbers of any other type are taken where they fit.
    for (const QVariant& number :
         {QVariant(110), QVariant::fromValue<uchar>(110), QVariant::fromValue<qlonglong>(110),
          QVariant::fromValue<ushort>(110), QVariant::fromValue(QDBusVariant(110))}) {
        client.Do("SetPrgmBits", {field, 1.0});
        Play({{"SetPrgmBits", {field, number}, ""}, {"GetPrgmBits", {field}, "110"}});
    }
    Play({{"AddBurst", {QStringLiteral("R0"), 0.0}, ""}});
    EXPECT_EQ(part().BurstCmds.Count(), 1);
}

TEST_F(CallsTest, names_of_a_megabyte_are_names_like_others) {
    const QString huge(1 << 20, QLatin1Char('x'));
    client.Do("SelectPart", {QStringLiteral("QVX2874")});
    EXPECT_EQ(client.Told("GetPrgmBits", {huge}), kNotFound);
    EXPECT_EQ(client.Told("SetPrgmBitsText", {QStringLiteral("N_INT"), huge}), "");
    EXPECT_EQ(client.Told("SelectTab", {huge}), "");
    EXPECT_EQ(client.Told("SelectPart", {huge}), "");
    EXPECT_EQ(part().ID.size(), huge.size());
    EXPECT_EQ(client.Told("SelectPart", {QStringLiteral("../../etc/passwd")}), "");
    EXPECT_TRUE(part().Registers.empty());
    EXPECT_EQ(client.Told("SelectPart", {QStringLiteral("QVX2874")}), "");
    EXPECT_EQ(part().Registers.Count(), 6);
}

// The device as objects.

TEST_F(CallsTest, the_device_is_a_tree_by_key_and_by_position) {
    client.Do("SelectPart", {QStringLiteral("QVX4100")});
    EXPECT_EQ(client.Text(client.Get(QLatin1String(kApp), "Part")), "/org/zentrel/Part");
    part().PrgmBits("CLK0_DIV").SetBitValue(6);
    for (const char* name : {"CLK0_5fDIV", "CLK0_DIV", "clk0_5fdiv", "1"}) {
        const QString path = QStringLiteral("/org/zentrel/Part/PrgmBits/") + QLatin1String(name);
        EXPECT_EQ(client.Text(client.Get(path, "BitValue")), "6") << name;
    }
    const QString field = QStringLiteral("/org/zentrel/Part/PrgmBits/CLK0_DIV");
    EXPECT_EQ(client.Text(client.Set(field, "BitValue", 3.0)), "");
    EXPECT_EQ(part().PrgmBits("CLK0_DIV").BitValue(), 3);
    EXPECT_EQ(client.Text(client.Call(field, QStringLiteral("Increment"))), "");
    EXPECT_EQ(part().PrgmBits("CLK0_DIV").BitValue(), 4);
    EXPECT_EQ(client.Text(client.Call(QStringLiteral("/org/zentrel/Part/ClkDists"),
                                      QStringLiteral("Item"), {Short(1)})),
              "/org/zentrel/Part/ClkDists/_30");
    EXPECT_EQ(client.Text(client.Get(QStringLiteral("/org/zentrel/Part/ClkDists/_30"), "ID")),
              "Clocks");
    EXPECT_EQ(client.Text(client.Get(QStringLiteral("/org/zentrel/Part/PLLs"), "Count")), "1");
    EXPECT_EQ(client.Text(client.Get(field, "Parent")), "/org/zentrel/Part");
    const QDBusMessage hex =
        client.Call(QStringLiteral("/org/zentrel/Part"), QStringLiteral("ConvertBinaryToHex"),
                    {QStringLiteral("110")});
    EXPECT_EQ(hex.arguments().size(), 2) << "the text that was filled up comes back";
    const QString node =
        QString::fromStdString(client.Text(client.Call(field, QStringLiteral("Introspect"))));
    EXPECT_TRUE(
        node.contains(QLatin1String("<property name=\"Value\" type=\"d\" access=\"readwrite\"")));
}

TEST_F(CallsTest, paths_and_members_that_lead_nowhere_are_errors) {
    client.Do("SelectPart", {QStringLiteral("QVX4100")});
    for (const char* path :
         {"/org/zentrel/Party", "/org/zentrel/Part/PrgmBits/NONE", "/org/zentrel/Part/PLLs/2",
          "/org/zentrel/Part/PLLs/0", "/org/zentrel/Part/PLLs/PLL/Part", "/org/zentrel/Part/ID",
          "/org/zentrel/Part/PLLs/99999999999999", "/org/zentrel/Application/1",
          "/org/zentrel/Nowhere"}) {
        for (const char* member : {"Introspect", "GetVersionID"}) {
            EXPECT_EQ(client.Text(client.Call(QLatin1String(path), QLatin1String(member))),
                      "org.freedesktop.DBus.Error.UnknownObject")
                << path;
        }
    }
    const QString pll = QStringLiteral("/org/zentrel/Part/PLLs/PLL");
    EXPECT_EQ(client.Text(client.Get(pll, "vcofrequency")),
              "org.freedesktop.DBus.Error.UnknownProperty");
    EXPECT_EQ(client.Text(client.Get(pll, "NCounter")), "org.freedesktop.DBus.Error.AccessDenied");
    EXPECT_EQ(client.Text(client.Set(pll, "Doubler", 2)),
              "org.freedesktop.DBus.Error.PropertyReadOnly");
    EXPECT_EQ(client.Text(client.Set(pll, "VCOFrequency", QStringLiteral("2"))), kInvalid);
    EXPECT_EQ(client.Text(client.Call(pll, QStringLiteral("Get"), {1, 2})), kInvalid);
}

TEST_F(CallsTest, looking_at_everything_changes_nothing) {
    client.Do("SelectPart", {QStringLiteral("QVX4100")});
    const QDBusMessage all =
        client.Call(QLatin1String(kFront), QStringLiteral("GetManagedObjects"));
    QMap<QString, QStringList> objects;
    const auto stream = qvariant_cast<QDBusArgument>(all.arguments()[0]);
    stream.beginMap();
    while (!stream.atEnd()) {
        QDBusObjectPath path;
        QMap<QString, QVariantMap> interfaces;
        stream.beginMapEntry();
        stream >> path >> interfaces;
        stream.endMapEntry();
        objects[path.path()] = interfaces.keys();
    }
    stream.endMap();
    EXPECT_EQ(objects[QStringLiteral("/org/zentrel/Part/PLLs/PLL")],
              QStringList{QStringLiteral("org.zentrel.cPLL")});
    EXPECT_EQ(objects[QStringLiteral("/org/zentrel/Part/PrgmBits/CLK0_5fDIV")].size(), 1);
    EXPECT_GT(objects.size(), 80);
    EXPECT_TRUE(part().Registers(1).changed()) << "a look doesn't take the flag down";
    EXPECT_EQ(client.Text(client.Get(QStringLiteral("/org/zentrel/Part/Registers/R0"), "Change")),
              "true");
    EXPECT_FALSE(part().Registers("R0").changed()) << "a read by name does, as told";
}

} // namespace
} // namespace zentrel
