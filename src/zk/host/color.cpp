#include "color.h"

#include <QGuiApplication>
#include <QPalette>

namespace zk {

namespace {

QPalette::ColorRole roleOf(TColor color) {
    switch (color) {
        case clScrollBar:
        case clMenu:
        case clBtnFace:
            return QPalette::Button;
        case clBackground:
        case clAppWorkSpace:
            return QPalette::Window;
        case clWindow:
            return QPalette::Base;
        case clWindowFrame:
        case cl3DDkShadow:
            return QPalette::Shadow;
        case clMenuText:
        case clBtnText:
            return QPalette::ButtonText;
        case clWindowText:
            return QPalette::WindowText;
        case clHighlight:
            return QPalette::Highlight;
        case clHighlightText:
            return QPalette::HighlightedText;
        case clBtnShadow:
            return QPalette::Dark;
        case clGrayText:
            return QPalette::PlaceholderText;
        case clBtnHighlight:
            return QPalette::Light;
        case cl3DLight:
            return QPalette::Midlight;
        case clInfoText:
            return QPalette::ToolTipText;
        case clInfoBk:
            return QPalette::ToolTipBase;
        default:
            return QPalette::NoRole;
    }
}

}  // namespace

TColor ColorToRGB(TColor color) {
    if (!(color & 0x80000000U))
        return color & 0x00FFFFFFU;
    const QPalette::ColorRole role = roleOf(color);
    if (role == QPalette::NoRole || !qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return 0;
    return FromQColor(QGuiApplication::palette().color(role));
}

QColor ToQColor(TColor color) {
    const TColor rgb = ColorToRGB(color);
    return QColor(int(rgb & 0xFF), int((rgb >> 8) & 0xFF), int((rgb >> 16) & 0xFF));
}

TColor FromQColor(const QColor& color) {
    if (!color.isValid())
        return 0;
    return TColor(color.red()) | TColor(color.green()) << 8 | TColor(color.blue()) << 16;
}

}  // namespace zk
