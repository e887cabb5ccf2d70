#pragma once

#include <filesystem>
#include <string>

#include <QAction>
#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include "app/program.h"

namespace zentrel {

/// The whole program over a copy of the shipped parts, with the simulated board behind it.
class WindowTest : public ::testing::Test {
  protected:
    void SetUp() override {
        namespace fs = std::filesystem;
        const fs::path parts = fs::path(ZENTREL_SOURCE_DIR) / "parts";
        fs::copy(parts, folder_.path().toStdString(), fs::copy_options::recursive);
        program_ = std::make_unique<Program>(folder_.path().toStdString());
        program_->Ended = [this] { ended_ = true; };
        program_->Start();
        program_->window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&program_->window()));
    }

    /// Picks a device as the engineer does.
    void Select(const std::string& device) {
        for (QAction* action : program_->window().findChildren<QAction*>()) {
            if (action->text() != QString::fromStdString(device)) continue;
            action->trigger();
            return;
        }
        FAIL() << "no menu entry " << device;
    }

    template<typename W = QWidget>
    W* Find(const char* name) {
        auto* widget = program_->window().findChild<W*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QAction* Entry(const char* name) {
        auto* action = program_->window().findChild<QAction*>(QLatin1String(name));
        EXPECT_NE(action, nullptr) << name;
        return action;
    }
    void ShowTab(int tab) {
        program_->frm().guard.Run([&] { program_->frm().tabPart.SelectTab(tab); });
    }
    cPart& part() { return program_->part(); }
    cRegister& Register(int number) { return part().Registers(number); }

    QTemporaryDir folder_;
    std::unique_ptr<Program> program_;
    bool ended_ = false;
};

} // namespace zentrel
