#include <zk/host/message.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QMessageBox>
#include <QPointer>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace zk;

namespace {

QList<QMessageBox*> boxes() {
    QList<QMessageBox*> found;
    for (QWidget* widget : QApplication::allWidgets()) {
        auto* box = qobject_cast<QMessageBox*>(widget);
        if (box && box->isVisible())
            found.append(box);
    }
    return found;
}

/// Lets queued calls and deferred deletions run.
void spin() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

class GuiMessage : public testing::Test {
  protected:
    GuiMessage() { InstallGuiMessageHandler(); }
    ~GuiMessage() override {
        for (QDeadlineTimer limit(5000); !boxes().isEmpty() && !limit.hasExpired();) {
            boxes().constFirst()->close();
            spin();
        }
        EXPECT_TRUE(boxes().isEmpty());
    }

    static void close() {
        ASSERT_FALSE(boxes().isEmpty());
        boxes().constFirst()->close();
        spin();
    }
};

}  // namespace

TEST_F(GuiMessage, TheBoxOpensFromTheEventLoopNotInsideTheCall) {
    ShowMessage(QStringLiteral("first"));
    EXPECT_TRUE(boxes().isEmpty());
    spin();
    ASSERT_EQ(1, boxes().size());
    EXPECT_EQ(QStringLiteral("first"), boxes().constFirst()->text());
}

TEST_F(GuiMessage, ItIsTheHandlerFromTheStart) {
    // The application installed it; whoever replaces it gets it back as the handler before.
    std::vector<std::string> caught;
    const MessageHandler gui = SetMessageHandler([&caught](const std::string& text) { caught.push_back(text); });
    ShowMessage(QStringLiteral("caught"));
    spin();
    EXPECT_EQ((std::vector<std::string>{"caught"}), caught);
    EXPECT_TRUE(boxes().isEmpty());
    gui("passed on");
    spin();
    EXPECT_EQ(1, boxes().size());
}

TEST_F(GuiMessage, TheSameTextIsOneBoxAsLongAsItStands) {
    for (int frame = 0; frame < 100; ++frame)
        ShowMessage(QStringLiteral("every frame"));
    spin();
    EXPECT_EQ(1, boxes().size());
    ShowMessage(QStringLiteral("every frame"));
    spin();
    EXPECT_EQ(1, boxes().size());
    close();
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(GuiMessage, ATextThatWasReadCanComeAgain) {
    ShowMessage(QStringLiteral("again"));
    spin();
    close();
    EXPECT_TRUE(boxes().isEmpty());
    ShowMessage(QStringLiteral("again"));
    spin();
    EXPECT_EQ(1, boxes().size());
}

TEST_F(GuiMessage, OtherTextsWaitForTheirTurn) {
    for (const char* text : {"one", "two", "three", "two"})
        ShowMessage(QString::fromLatin1(text));
    for (const char* text : {"one", "two", "three"}) {
        spin();
        ASSERT_EQ(1, boxes().size());
        EXPECT_EQ(QString::fromLatin1(text), boxes().constFirst()->text());
        close();
    }
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(GuiMessage, MarkupIsShownAsItIs) {
    ShowMessage(QStringLiteral("<b>a & b</b>"));
    spin();
    ASSERT_EQ(1, boxes().size());
    EXPECT_EQ(Qt::PlainText, boxes().constFirst()->textFormat());
}

TEST_F(GuiMessage, TextsKeepTheirBlanksAndUmlauts) {
    const QString text = QStringLiteral(" Zyklischer Verweis \u00e4\u00f6\u00fc");
    ShowMessage(text);
    spin();
    ASSERT_EQ(1, boxes().size());
    EXPECT_EQ(text, boxes().constFirst()->text());
}

TEST_F(GuiMessage, AnEmptyTextIsABoxToo) {
    ShowMessage(QString());
    spin();
    EXPECT_EQ(1, boxes().size());
}

TEST_F(GuiMessage, ABoxThatGoesWithItsWindowMakesRoomForTheNext) {
    auto window = std::make_unique<QWidget>();
    window->show();
    window->activateWindow();
    QApplication::setActiveWindow(window.get());
    ShowMessage(QStringLiteral("with the window"));
    ShowMessage(QStringLiteral("after the window"));
    spin();
    ASSERT_EQ(1, boxes().size());
    EXPECT_EQ(window.get(), boxes().constFirst()->parentWidget());
    window.reset();
    spin();
    ASSERT_EQ(1, boxes().size());
    EXPECT_EQ(QStringLiteral("after the window"), boxes().constFirst()->text());
}

TEST_F(GuiMessage, MessagesOfTheGeometryLayerTakeTheSameWay) {
    ShowMessage(std::string("plain string"));
    spin();
    ASSERT_EQ(1, boxes().size());
    EXPECT_EQ(QStringLiteral("plain string"), boxes().constFirst()->text());
}

TEST_F(GuiMessage, AMessageInsideAMessageIsQueued) {
    ShowMessage(QStringLiteral("outer"));
    spin();
    ASSERT_EQ(1, boxes().size());
    QObject::connect(boxes().constFirst(), &QMessageBox::finished, [] { ShowMessage(QStringLiteral("inner")); });
    close();
    spin();
    ASSERT_EQ(1, boxes().size());
    EXPECT_EQ(QStringLiteral("inner"), boxes().constFirst()->text());
}

TEST(Message, TheBeepGoesThroughItsHandler) {
    int beeps = 0;
    const BeepHandler gui = SetBeepHandler([&beeps] { ++beeps; });
    MessageBeep();
    EXPECT_EQ(1, beeps);
    InstallGuiMessageHandler();
    MessageBeep();
    EXPECT_EQ(1, beeps);
}
