#include "platform/Application.h"

#include "platform/ObservableObject.h"
#include "platform/Published.h"
#include "platform/linux/MainWindow.h"
#include "platform/ui/Elements.h"
#include "platform/ui/SceneHost.h"
#include "tests/platform/linux/window/WindowTest.h"

#include <QMenu>
#include <QProxyStyle>
#include <QStyle>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <csignal>

namespace platform {
namespace {

class Delegate : public NSApplicationDelegate {
public:
    bool applicationShouldTerminateAfterLastWindowClosed() override {
        ++asked;
        return quits;
    }

    bool quits = true;
    int asked = 0;
};

ui::View content() {
    return ui::Text::verbatim("Content")
        .frame(ui::FixedFrame{.width = 450, .height = 230})
        .preferredColorScheme(ui::ColorScheme::light);
}

/// The running application. A script acts as the user. The main loop starts it once the window is shown.
class TheRunningApplication : public testing::Test {
protected:
    using Script = std::function<void(MainWindow&)>;

    TheRunningApplication() { fake::setMainBundle(InfoDictionary{}, ICONS); }

    int run(const Script& script, const std::function<ui::View()>& view = content,
            std::vector<std::string> arguments = {"application"}) {
        const ui::WindowGroup group{[&] {
            QTimer::singleShot(0, [&script] { script(*window()); });
            return view();
        }};
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        return runApplication(static_cast<int>(arguments.size()), argv.data(), "Driver Manager", delegate_, group);
    }
    static MainWindow* window() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* found = dynamic_cast<MainWindow*>(widget)) return found;
        return nullptr;
    }

    fake::FreshServices services_;
    Delegate delegate_;
};

TEST_F(TheRunningApplication, ShowsOneWindowOfTheSizeOfItsContent) {
    run([](MainWindow& window) {
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(window.windowTitle(), "Driver Manager");
        EXPECT_EQ(window.size(), QSize(450, 230));
        EXPECT_EQ(QGuiApplication::topLevelWindows().size(), 1);
        window.close();
    });
}

TEST_F(TheRunningApplication, HasAWindowThatCannotBeResized) {
    run([](MainWindow& window) {
        EXPECT_EQ(window.minimumSize(), QSize(450, 230));
        EXPECT_EQ(window.maximumSize(), QSize(450, 230));
        EXPECT_FALSE(window.windowFlags() & Qt::WindowMaximizeButtonHint);
        EXPECT_TRUE(window.windowFlags() & Qt::WindowCloseButtonHint);
        window.resize(600, 400);
        EXPECT_EQ(window.size(), QSize(450, 230));
        window.close();
    });
}

TEST_F(TheRunningApplication, QuitsWhenItsWindowIsClosedAndTheDelegateAgrees) {
    EXPECT_EQ(run([](MainWindow& window) { window.close(); }), 0);
    EXPECT_EQ(delegate_.asked, 1);
}

TEST_F(TheRunningApplication, KeepsRunningWithoutAWindowIfTheDelegateSaysSo) {
    delegate_.quits = false;
    const Script script = [](MainWindow& window) {
        window.close();
        QTimer::singleShot(0, [] { QCoreApplication::exit(7); });
    };
    EXPECT_EQ(run(script), 7);
    EXPECT_EQ(delegate_.asked, 1);
}

TEST_F(TheRunningApplication, EndsOnASignal) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        EXPECT_EXIT(run([signal](MainWindow&) { std::raise(signal); }), testing::KilledBySignal(signal), "");
}

TEST_F(TheRunningApplication, EndsOnASignalBeforeItsMainLoop) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto lastView = [] {
        std::raise(SIGTERM);
        std::_Exit(0);
        return content();
    };
    EXPECT_EXIT(run([](MainWindow&) {}, lastView), testing::KilledBySignal(SIGTERM), "");
}

TEST_F(TheRunningApplication, IgnoresItsCommandLine) {
    const Script script = [](MainWindow& window) {
        EXPECT_EQ(qobject_cast<QProxyStyle*>(QApplication::style())->baseStyle()->name(), "fusion");
        EXPECT_TRUE(qApp->styleSheet().isEmpty());
        window.close();
    };
    EXPECT_EQ(run(script, content, {"application", "-style", "windows", "-stylesheet", "none", "--help", "x"}), 0);
}

TEST_F(TheRunningApplication, RunsWithoutAnyArgument) {
    EXPECT_EQ(run([](MainWindow& window) { window.close(); }, content, {}), 0);
}

TEST_F(TheRunningApplication, IsLightEvenOnADarkDesktop) {
    run([](MainWindow& window) {
        const QImage light = window.grab().toImage();
        QApplication::setPalette(QPalette{QColor{20, 20, 20}});
        QCoreApplication::processEvents();
        EXPECT_EQ(window.grab().toImage(), light);
        EXPECT_EQ(light.pixelColor(5, 225), QColor(236, 236, 236));
        window.close();
    });
}

TEST_F(TheRunningApplication, ReadsItsImagesFromTheMainBundle) {
    run([](MainWindow& window) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !window.windowIcon().pixmap(16, 16).isNull(); }));
        window.close();
    });
    fake::setMainBundle(InfoDictionary{}, "/nowhere");
    run([](MainWindow& window) {
        QCoreApplication::processEvents();
        EXPECT_TRUE(window.windowIcon().pixmap(16, 16).isNull());
        window.close();
    });
}

TEST_F(TheRunningApplication, DrawsItsIconOnceItIsSeen) {
    const auto unseen = [] {
        EXPECT_TRUE(window()->windowIcon().isNull());
        return content();
    };
    run([](MainWindow& window) { window.close(); }, unseen);
}

/// A model of one number, and a screen of it with a menu.
class RebuildingTheWindow : public TheRunningApplication {
protected:
    struct Counter : ObservableObject {
        Published<int> value{*this, 0};
    };

    void runScreen(const Script& script) {
        const auto body = [this] {
            ++bodies_;
            return ui::View{ui::VStack{ui::HorizontalAlignment::center,
                                       ui::Text::verbatim(std::to_string(counter_->value.get())),
                                       ui::Menu{"Menu", {ui::Button{ui::Label{"Item", "trash"}, [] {}}}}}};
        };
        run(script, [&] { return ui::observing(counter_, body).frame(ui::FixedFrame{.width = 450, .height = 230}); });
    }

    const std::shared_ptr<Counter> counter_ = std::make_shared<Counter>();
    int bodies_ = 0;
};

TEST_F(RebuildingTheWindow, HappensOnceAtTheEndOfATurn) {
    runScreen([this](MainWindow& window) {
        const int before = bodies_;
        for (int i = 1; i <= 100; ++i)
            counter_->value = i;
        EXPECT_EQ(bodies_, before);
        QTimer::singleShot(0, [this, before, &window] {
            EXPECT_EQ(bodies_, before + 1);
            window.close();
        });
    });
}

TEST_F(RebuildingTheWindow, HappensWhileAMenuIsOpen) {
    runScreen([this](MainWindow& window) {
        window.findChild<QAbstractButton*>()->click();
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        const QImage before = window.grab().toImage();
        counter_->value = 8;
        QTimer::singleShot(0, [&window, before] {
            EXPECT_NE(QApplication::activePopupWidget(), nullptr);
            EXPECT_NE(window.grab().toImage(), before);
            QApplication::activePopupWidget()->close();
            window.close();
        });
    });
}

} // namespace
} // namespace platform
