#pragma once

#include "print.h"

#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkogltools.h>
#include <zk/host/message.h>

#include <QColor>
#include <QImage>
#include <QStringList>
#include <QWidget>

#include <memory>

namespace zk::test {

/// What the screen shows of shapes in one full color that nothing lights (`GlForm::MakeFlat`). 254 and not 255, as a
/// component of a color goes to OpenGL in 256ths.
inline const QColor red(254, 0, 0), green(0, 254, 0), blue(0, 0, 254), black(0, 0, 0);

/// Collects the messages of its scope instead of showing them.
class MessageCatcher {
  public:
    MessageCatcher();
    ~MessageCatcher();
    QStringList Take() { return std::exchange(texts_, {}); }
    const QStringList& Texts() const { return texts_; }

  private:
    QStringList texts_;
    MessageHandler old_;
};

/// A real window with a control of the given client size, and a canvas that paints into it; shown and painted when the
/// constructor returns. Messages are caught, and any that nobody took fails the test.
class GlForm {
  public:
    explicit GlForm(const QSize& client = QSize(300, 300));
    ~GlForm();

    /// A scene of the canvas, owned by the window.
    TZKOglScene* AddScene();
    /// A box in a scene. Its emission is `color` and everything else black, so that it looks the same from everywhere.
    TZKOglBox* AddBox(TZKOglScene* scene, TColor color, const TXYZ& size, const TXYZ& at);
    static void MakeFlat(Tmaterial* material, TColor color);

    /// What the user sees of the client area, taken from the screen, in device pixels.
    QImage Screen();
    /// What the user sees at a pixel of the client area (device-independent).
    QColor PixelAt(const QPointF& client);
    /// The native window that the window system sends the mouse events of the client area to while a canvas is bound.
    QWindow* MouseWindow() const;
    /// A real press and release of the left button at a pixel of the client area.
    void Click(const QPoint& client);
    /// Lets the event loop run until nothing is to be done.
    static void Settle();

    /// How often the canvas has swapped since the last call.
    int TakeSwaps() { return std::exchange(swaps, 0); }
    void CountSwaps();

    MessageCatcher messages;
    std::unique_ptr<QWidget> window;
    TZKOglControl* control = nullptr;
    TZkOglCanvas* canvas = nullptr;
    int swaps = 0;
};

/// OpenGL's pending error on the canvas's context, 0 for none.
unsigned PendingError(TZkOglCanvas& canvas);

}  // namespace zk::test
