#include "message.h"

#include <QApplication>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QStringList>

namespace zk {

namespace {

// Texts that wait for their box, the one on show first.
QStringList& pending() {
    static QStringList texts;
    return texts;
}

// The box on show, if any.
QPointer<QMessageBox>& shown() {
    static QPointer<QMessageBox> box;
    return box;
}

void showNext() {
    if (shown() || pending().isEmpty() || !qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    auto* box = new QMessageBox(QMessageBox::Information, QCoreApplication::applicationName(), pending().constFirst(),
                                QMessageBox::Ok, QApplication::activeWindow());
    shown() = box;
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    QObject::connect(box, &QObject::destroyed, qApp, [] {
        if (!pending().isEmpty())
            pending().removeFirst();
        // Later: a widget that tells of its end still counts as there, for guarded pointers and as the active window.
        QMetaObject::invokeMethod(qApp, showNext, Qt::QueuedConnection);
    });
    box->open();
}

// The application is about to go: what has not been read by now will not be, and must not keep the texts of a later
// application waiting.
void dropAll() {
    pending().clear();
    delete shown().data();
}

void guiMessage(const std::string& text) {
    QCoreApplication* application = QCoreApplication::instance();
    if (!qobject_cast<QApplication*>(application)) {
        qWarning("%s", text.c_str());
        return;
    }
    const QString line = QString::fromStdString(text);
    if (pending().contains(line))
        return;
    pending().append(line);
    QMetaObject::invokeMethod(application, showNext, Qt::QueuedConnection);
}

void guiBeep() {
    if (qobject_cast<QApplication*>(QCoreApplication::instance()))
        QApplication::beep();
}

}  // namespace

void ShowMessage(const QString& text) {
    ShowMessage(text.toStdString());
}

void InstallGuiMessageHandler() {
    SetMessageHandler(guiMessage);
    SetBeepHandler(guiBeep);
}

}  // namespace zk

static void installAtStartup() {
    zk::InstallGuiMessageHandler();
    qAddPostRoutine(zk::dropAll);
}
Q_COREAPP_STARTUP_FUNCTION(installAtStartup)
