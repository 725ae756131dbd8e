// The program that says what a machine offers, as a user runs it.
#include <QMap>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

struct Result {
    int code = -1;
    QMap<QString, QString> lines;  ///< by the name in front of the colon
    QString text;
};

Result run(const QMap<QString, QString>& variables = {}, const QStringList& arguments = {}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
        environment.insert(variable.key(), variable.value());
    process.setProcessEnvironment(environment);
    process.start(DOCTOR_PROGRAM, arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    Result result;
    if (process.exitStatus() == QProcess::NormalExit)
        result.code = process.exitCode();
    result.text = QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
    for (const QString& line : result.text.split('\n'))
        if (const qsizetype colon = line.indexOf(QStringLiteral(": ")); colon > 0)
            result.lines.insert(line.left(colon), line.mid(colon + 2));
    return result;
}

}  // namespace

TEST(Doctor, FindsThisMachineHealthy) {
    const Result result = run();
    EXPECT_EQ(result.code, 0) << result.text.toStdString();
    EXPECT_EQ(result.lines["window system"], "xcb");
    EXPECT_TRUE(result.lines["Qt"].startsWith(qVersion()));
    EXPECT_TRUE(result.lines["OpenGL"].contains("compatibility profile"));
    EXPECT_FALSE(result.lines["renderer"].isEmpty());
    EXPECT_TRUE(result.lines["depth"].endsWith("bits"));
    EXPECT_FALSE(result.lines["swap"].startsWith("unknown"));
    EXPECT_TRUE(result.lines["metafiles"].endsWith("zkogl-metafile"));
    EXPECT_TRUE(result.lines["workarounds on"].contains("kept-picture"));
    EXPECT_EQ(result.lines["workarounds off"], "none");
    for (const char* trial : {"drawing", "lists", "picking", "errors"})
        EXPECT_EQ(result.lines[trial], "well") << trial;
}

TEST(Doctor, SaysWhatIsSwitchedOff) {
    const Result result = run({{"ZKOGL_WORKAROUNDS_OFF", "new-size,kept-picture"}});
    EXPECT_EQ(result.code, 0) << result.text.toStdString();
    EXPECT_EQ(result.lines["workarounds off"], "kept-picture, new-size");
    EXPECT_FALSE(result.lines["workarounds on"].contains("new-size"));
}

TEST(Doctor, SaysWhatIsMissing) {
    const Result noOpenGl = run({{"QT_QPA_PLATFORM", "minimal"}});
    EXPECT_EQ(noOpenGl.code, 1);
    EXPECT_TRUE(noOpenGl.lines["OpenGL"].startsWith("FAILS: ")) << noOpenGl.text.toStdString();
    EXPECT_GT(noOpenGl.lines["OpenGL"].size(), 20) << "in words";
    const Result noSurface = run({{"ZKOGL_WORKAROUNDS_OFF", "surface-type"}});
    EXPECT_EQ(noSurface.code, 1);
    EXPECT_TRUE(noSurface.lines["OpenGL"].startsWith("FAILS: ")) << noSurface.text.toStdString();
}

TEST(Doctor, TakesNoArguments) {
    EXPECT_EQ(run({}, {"please"}).code, 2);
}
