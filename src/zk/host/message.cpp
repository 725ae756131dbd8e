#include <zk/host/message.h>

#include <QApplication>
#include <QMessageBox>
#include <QStringList>

namespace zk {

namespace {

// Texts that wait for their box, the one on show first.
QStringList& pending() {
    static QStringList texts;
    return texts;
}

void showNext() {
    if (pending().isEmpty() || !qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    auto* box = new QMessageBox(QMessageBox::Information, QCoreApplication::applicationName(), pending().constFirst(),
                                QMessageBox::Ok, QApplication::activeWindow());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    QObject::connect(box, &QObject::destroyed, qApp, [] {
        pending().removeFirst();
        showNext();
    });
    box->open();
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
    if (pending().size() == 1)
        QMetaObject::invokeMethod(application, showNext, Qt::QueuedConnection);
}

void guiBeep() {
    if (qobject_cast<QApplication*>(QCoreApplication::instance()))
        QApplication::beep();
}

}  // namespace

void ShowMessage(const QString& text) { ShowMessage(text.toStdString()); }

void InstallGuiMessageHandler() {
    SetMessageHandler(guiMessage);
    SetBeepHandler(guiBeep);
}

}  // namespace zk

static void installAtStartup() { zk::InstallGuiMessageHandler(); }
Q_COREAPP_STARTUP_FUNCTION(installAtStartup)
