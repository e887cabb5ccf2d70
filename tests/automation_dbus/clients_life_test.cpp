#include <atomic>

#include <QMessageBox>

#include "tests/automation_dbus/bus_fixture.h"
#include "tests/automation_dbus/test_bus.h"

namespace zentrel {
namespace {

using Client = std::unique_ptr<BusClient>;

class ClientsLifeTest : public BusTest {
  protected:
    static std::string Create(BusClient& client) {
        return client.Text(client.Call(QLatin1String(kFront), QStringLiteral("Create")));
    }
    static std::string Release(BusClient& client, const std::string& object) {
        return client.Text(client.Call(QString::fromStdString(object), QStringLiteral("Release")));
    }
    static bool Runs(BusClient& client) {
        return client.Text(client.Get(QStringLiteral("/org/zentrel/Part"), "BurstRunning")) ==
               "true";
    }
    /// A device with a burst of one word, which then runs until it is stopped.
    void LoadBurst(BusClient& client) {
        client.Do("SelectPart", {QStringLiteral("QVX2874")});
        client.Do("AddBurst", {QStringLiteral("R0"), Short(0)});
    }
};

TEST_F(ClientsLifeTest, an_object_of_ones_own_holds_the_window_until_it_is_released) {
    BusClient bench, plotter;
    EXPECT_EQ(bench.Told("GetVersionID"), "Zentrel 4.2");
    EXPECT_FALSE(frm().session.bOLEServer) << "the program's own object holds nothing";
    const std::string a = Create(bench), b = Create(plotter);
    EXPECT_TRUE(frm().session.bOLEServer);
    EXPECT_EQ(bench.Text(bench.Call(QString::fromStdString(b), QStringLiteral("GetVersionID"))),
              "Zentrel 4.2");
    EXPECT_EQ(Release(bench, b), "org.freedesktop.DBus.Error.AccessDenied");
    EXPECT_EQ(Release(bench, a), "");
    EXPECT_EQ(Release(bench, a), "org.freedesktop.DBus.Error.UnknownObject");
    EXPECT_TRUE(program_->window().isVisible());
    EXPECT_EQ(ended_, 0);
    EXPECT_EQ(Release(plotter, b), "");
    EXPECT_EQ(ended_, 1);
    EXPECT_FALSE(frm().Visible);
}

TEST_F(ClientsLifeTest, a_bench_program_that_is_killed_lets_go_and_a_passer_by_closes_nothing) {
    std::unique_ptr<QProcess> bench;
    Beside([&] {
        bench = Child("holds");
        BusClient passer;
        passer.Told("GetVersionID");
    });
    frm().Unload();
    EXPECT_EQ(ended_, 0) << "the engineer's close waits for the client";
    bench->kill();
    EXPECT_TRUE(Until([&] { return ended_ == 1; }));
}

TEST_F(ClientsLifeTest, a_client_that_is_killed_in_its_burst_ends_the_run_and_the_program_closes) {
    BusClient watcher;
    LoadBurst(watcher);
    Beside([&] {
        const auto bench = Child("burst");
        EXPECT_TRUE(Soon([&] { return Runs(watcher); }));
        bench->kill();
        bench->waitForFinished();
    });
    EXPECT_TRUE(Until([&] { return ended_ == 1; }));
    EXPECT_FALSE(part().BurstRunning());
}

TEST_F(ClientsLifeTest, a_running_burst_answers_what_reads_and_makes_the_rest_wait) {
    BusClient bench, watcher;
    LoadBurst(bench);
    Beside([&] {
        const QDBusPendingCall run = bench.Begin(QLatin1String(kApp), QStringLiteral("StartBurst"));
        ASSERT_TRUE(Soon([&] { return Runs(watcher); }));
        const QDBusPendingCall set = watcher.Begin(
            QLatin1String(kApp), QStringLiteral("SetPrgmBits"), {QStringLiteral("N_INT"), 321.0});
        EXPECT_NE(watcher.Told("GetPrgmBits", {QStringLiteral("N_INT")}), "321");
        EXPECT_EQ(watcher.Told("StartBurst"), "") << "told to do nothing then";
        QThread::msleep(50);
        EXPECT_FALSE(set.isFinished());
        EXPECT_FALSE(run.isFinished());
        EXPECT_EQ(watcher.Told("StopBurst"), "");
        EXPECT_NE(BusClient::Wait(run).type(), QDBusMessage::ErrorMessage);
        BusClient::Wait(set);
        EXPECT_EQ(watcher.Told("GetPrgmBits", {QStringLiteral("N_INT")}), "321");
    });
}

TEST_F(ClientsLifeTest, another_part_ends_the_burst_first_and_the_same_part_leaves_it) {
    BusClient bench, other;
    LoadBurst(bench);
    Beside([&] {
        const QDBusPendingCall run = bench.Begin(QLatin1String(kApp), QStringLiteral("StartBurst"));
        ASSERT_TRUE(Soon([&] { return Runs(other); }));
        EXPECT_EQ(other.Told("SelectPart", {QStringLiteral("QVX2874")}), "");
        EXPECT_TRUE(Runs(other));
        EXPECT_EQ(other.Told("SelectPart", {QStringLiteral("QVX2691")}), "");
        EXPECT_NE(BusClient::Wait(run).type(), QDBusMessage::ErrorMessage);
    });
    EXPECT_EQ(part().ID, "QVX2691");
}

TEST_F(ClientsLifeTest, a_choice_of_part_that_cannot_be_served_leaves_the_burst_running) {
    BusClient bench, other;
    LoadBurst(bench);
    Beside([&] {
        const QDBusPendingCall run = bench.Begin(QLatin1String(kApp), QStringLiteral("StartBurst"));
        ASSERT_TRUE(Soon([&] { return Runs(other); }));
        const QString select = QStringLiteral("SelectPart"), part = QStringLiteral("QVX2691");
        const std::vector<QDBusPendingCall> calls{
            other.Begin(QLatin1String(kApp), select), other.Begin(QLatin1String(kApp), select, {5}),
            other.Begin(QLatin1String(kApp), select, {part, part}),
            other.Begin(QStringLiteral("/org/zentrel/Wire"), select, {part}),
            other.Begin(QStringLiteral("/nowhere"), select, {part})};
        QThread::msleep(50);
        EXPECT_TRUE(Runs(other));
        other.Told("StopBurst");
        BusClient::Wait(run);
        for (const QDBusPendingCall& call : calls)
            EXPECT_EQ(BusClient::Wait(call).type(), QDBusMessage::ErrorMessage);
    });
    EXPECT_EQ(part().ID, "QVX2874");
}

TEST_F(ClientsLifeTest, a_hundred_clients_come_and_go_at_once) {
    std::vector<Client> clients;
    std::vector<QDBusPendingCall> calls;
    for (int i = 0; i < 100; ++i) {
        clients.push_back(std::make_unique<BusClient>());
        calls.push_back(clients.back()->Begin(QLatin1String(kFront), QStringLiteral("Create")));
    }
    std::set<std::string> objects;
    for (const auto& call : calls)
        objects.insert(BusClient::Text(BusClient::Wait(call)));
    EXPECT_EQ(objects.size(), 100U);
    for (auto& client : clients) {
        EXPECT_EQ(ended_, 0);
        calls.push_back(client->Begin(QLatin1String(kApp), QStringLiteral("GetVersionID")));
        client.reset();
    }
    EXPECT_TRUE(Until([&] { return ended_ == 1; }));
}

TEST_F(ClientsLifeTest, a_message_box_holds_calls_up_until_it_is_answered) {
    program_->boxes().SetAttended(true);
    const auto box = [] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); };
    std::atomic<bool> shown = false, answer = false;
    QTimer engineer;
    QObject::connect(&engineer, &QTimer::timeout, [&] {
        if (box() == nullptr) return;
        EXPECT_EQ(box()->text(), QStringLiteral("hi"));
        shown = true;
        if (answer) box()->accept();
    });
    engineer.start(5);
    Beside([&] {
        BusClient bench, other;
        const QDBusPendingCall check = bench.Begin(QLatin1String(kApp), QStringLiteral("CheckBit"));
        ASSERT_TRUE(Soon([&] { return shown.load(); }));
        const auto version = other.Begin(QLatin1String(kApp), QStringLiteral("GetVersionID"));
        QThread::msleep(100);
        EXPECT_FALSE(version.isFinished());
        EXPECT_FALSE(check.isFinished());
        answer = true;
        EXPECT_EQ(BusClient::Text(BusClient::Wait(check)), "false");
        EXPECT_EQ(BusClient::Text(BusClient::Wait(version)), "Zentrel 4.2");
    });
}

TEST_F(ClientsLifeTest, without_a_screen_a_message_box_answers_itself) {
    BusClient bench;
    testing::internal::CaptureStderr();
    EXPECT_EQ(bench.Told("CheckBit"), "false");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Zentrel: hi\n");
}

TEST_F(ClientsLifeTest, ten_thousand_settings_in_a_row_leave_the_window_its_life) {
    BusClient bench;
    bench.Do("SelectPart", {QStringLiteral("QVX2874")});
    // How many calls are served between two turns of the window's own events.
    int served = 31, longest = 0;
    QTimer heart;
    QObject::connect(&heart, &QTimer::timeout, [&] {
        const int now = static_cast<int>(part().PrgmBits("N_INT").BitValue());
        longest = std::max(longest, now - served);
        served = now;
    });
    std::vector<QDBusPendingCall> calls;
    for (int i = 0; i < 10000; ++i) {
        calls.push_back(bench.Begin(QLatin1String(kApp), QStringLiteral("SetPrgmBits"),
                                    {QStringLiteral("N_INT"), 31.0 + i % 4000}));
    }
    heart.start(0);
    EXPECT_EQ(BusClient::Text(BusClient::Wait(calls.back())), "");
    EXPECT_LT(longest, 1000);
    EXPECT_EQ(bench.Told("GetPrgmBits", {QStringLiteral("N_INT")}), "2030");
    RecordProperty("longest", longest);
}

class BusLifeTest : public BusTest {
  protected:
    void SetUp() override {}
};

TEST_F(BusLifeTest, a_bus_that_ends_leaves_the_window_and_a_new_one_is_joined) {
    TestBus bus;
    StartProgram(bus.Address());
    {
        BusClient bench(bus.Address());
        bench.Do("SelectPart", {QStringLiteral("QVX2874")});
        bench.Call(QLatin1String(kFront), QStringLiteral("Create"));
        EXPECT_TRUE(frm().session.bOLEServer);
        bus.Stop();
        EXPECT_TRUE(Until([&] { return !frm().session.bOLEServer; }));
    }
    EXPECT_EQ(ended_, 0);
    EXPECT_TRUE(program_->window().isVisible());
    bus.Start();
    EXPECT_TRUE(Until([&] {
        BusClient bench(bus.Address());
        return bench.bus().interface()->isServiceRegistered(QStringLiteral("org.zentrel.Zentrel"));
    }));
    BusClient bench(bus.Address());
    EXPECT_EQ(bench.Told("CheckPLLName", {QStringLiteral("PLL1")}), "true");
}

TEST_F(BusLifeTest, a_client_that_waits_for_its_object_when_the_bus_ends_holds_nothing) {
    TestBus bus;
    StartProgram(bus.Address());
    BusClient holder(bus.Address()), waits(bus.Address());
    holder.Call(QLatin1String(kFront), QStringLiteral("Create"));
    ASSERT_TRUE(frm().session.bOLEServer);
    frm().guard.Run([&] {
        waits.Begin(QLatin1String(kFront), QStringLiteral("Create"));
        QTest::qWait(100);
        bus.Stop();
        EXPECT_TRUE(Until([&] { return !frm().session.bOLEServer; }));
    });
    EXPECT_FALSE(frm().session.bOLEServer) << "the engineer can close the window";
}

// A program that ends just when it is asked for its window.
class Ending : public QDBusVirtualObject {
  public:
    Ending() {
        client_->bus().registerVirtualObject(QLatin1String(kFront), this);
        client_->bus().registerService(QLatin1String(dbus::kBusName));
    }
    bool handleMessage(const QDBusMessage&, const QDBusConnection&) override {
        QTimer::singleShot(0, this, [this] { client_.reset(); });
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

  private:
    Client client_ = std::make_unique<BusClient>();
};

TEST_F(BusLifeTest, a_start_while_the_first_program_ends_is_a_first_start) {
    Ending first;
    bool raised = true;
    Beside([&] { raised = dbus::RaiseRunningProgram(); });
    EXPECT_FALSE(raised);
}

TEST_F(BusLifeTest, without_a_bus_the_program_runs_all_the_same) {
    namespace fs = std::filesystem;
    program_ = std::make_unique<Program>(folder_.path().toStdString());
    program_->Start();
    EXPECT_EQ(program_->JoinBus(QStringLiteral("unix:path=/nowhere/bus")),
              dbus::Bus::Joined::NoBus);
    EXPECT_TRUE(program_->window().isVisible());
}

TEST_F(BusLifeTest, a_second_start_brings_the_first_window_up_and_ends) {
    StartProgram();
    program_->window().showMinimized();
    QProcess second;
    second.start(QStringLiteral(ZENTREL_PROGRAM), QStringList());
    EXPECT_TRUE(Until([&] { return second.state() == QProcess::NotRunning; }));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_FALSE(program_->window().isMinimized());
}

TEST_F(BusLifeTest,
       a_call_starts_the_program_on_a_bench_without_a_display_and_the_last_release_ends_it) {
    TestBus bus;
    BusClient bench(bus.Address());
    const auto running = [&] {
        return bench.bus()
            .interface()
            ->isServiceRegistered(QStringLiteral("org.zentrel.Zentrel"))
            .value();
    };
    EXPECT_FALSE(running());
    EXPECT_EQ(bench.Told("SelectPart", {QStringLiteral("QVX2874")}), "");
    EXPECT_EQ(bench.Told("SetVCOFrequency", {QStringLiteral("PLL1"), 2450.0}), "");
    EXPECT_EQ(bench.Told("GetVCOFrequency", {QStringLiteral("PLL1")}), "2450")
        << "the program stands between two calls";
    const std::string object =
        bench.Text(bench.Call(QLatin1String(kFront), QStringLiteral("Create")));
    EXPECT_EQ(bench.Text(bench.Call(QString::fromStdString(object), QStringLiteral("Release"))),
              "");
    EXPECT_TRUE(Until([&] { return !running(); }));
}

} // namespace
} // namespace zentrel
