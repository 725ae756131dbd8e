// Programs on live components: the bytes say what is made, bound, changed, painted and deleted, with values that no
// form has among them. What each component refers to, lists and is told of is what the model of tests/model says. With
// a display pictures are drawn by OpenGL, otherwise none are.
#include "world.h"

#include <QApplication>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void BeQuiet(QtMsgType /*type*/, const QMessageLogContext& /*where*/, const QString& /*text*/) {}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 1;
    static char name[] = "property_fuzz";
    static char* argv[] = {name, nullptr};
    static const bool hasPlatform = !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
    if (!hasPlatform) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qunsetenv("DISPLAY");
    }
    static const QApplication application(argc, argv);
    static const auto quiet = qInstallMessageHandler(BeQuiet);
    static_cast<void>(quiet);
    if (size > 8192)
        return 0;
    zk::test::World world({.live = QGuiApplication::platformName() == QLatin1String("xcb"), .wild = true});
    zk::test::ByteChoices choices({data, size});
    while (!choices.IsUsedUp() && world.Failure().empty())
        world.Step(choices);
    if (world.Failure().empty())
        world.End();
    if (!world.Failure().empty()) {
        std::fprintf(stderr, "%s\nafter these steps:\n%s", world.Failure().c_str(), world.Program().c_str());
        std::abort();
    }
    return 0;
}
