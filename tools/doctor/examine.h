#pragma once

#include <QString>
#include <QStringList>

/// What there is to be said of this machine.
struct Examination {
    QStringList lines;  ///< "name: value", in the order in which they are to be read
    bool healthy = true;
};

/// Opens a window for a moment, asks the window system and the driver, and tries out drawing, lists and picking.
Examination Examine();
