#include "examine.h"

#include <QApplication>

#include <cstdio>

// Arguments are Qt's own, such as -platform.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    if (QCoreApplication::arguments().size() > 1) {
        std::fputs("usage: zkogl-doctor\nPrints what this machine offers to ZKOgl, and tries it out.\n", stderr);
        return 2;
    }
    const Examination found = Examine();
    for (const QString& line : found.lines)
        std::puts(qUtf8Printable(line));
    return found.healthy ? 0 : 1;
}
