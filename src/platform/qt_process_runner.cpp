#include "platform/qt_process_runner.hpp"

#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

namespace arborex {

namespace {

QString qs(const std::string& text) {
    return QString::fromStdString(text);
}

std::string failedToStart(const std::string& program, const QString& reason) {
    return "The program " + program + " could not be started: " + reason.toStdString();
}

}  // namespace

ProcessResult QtProcessRunner::run(const ProcessRequest& request) {
    ProcessResult result;
    const QFileInfo program(qs(request.program));
    if (!program.exists() || program.isDir()) {
        result.status = ProcessStatus::NotFound;
        result.message = "The program " + request.program + " was not found.";
        return result;
    }
    QStringList arguments;
    for (const std::string& argument : request.arguments) arguments << qs(argument);

    QProcess process;
    process.setProgram(program.absoluteFilePath());
    process.setArguments(arguments);
    process.setWorkingDirectory(qs(request.workingFolder));
    process.setProcessChannelMode(QProcess::ForwardedChannels);

    QEventLoop loop;
    QTimer deadline;
    deadline.setSingleShot(true);
    bool timedOut = false;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, [&](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) loop.quit();
    });
    QObject::connect(&deadline, &QTimer::timeout, &loop, [&] {
        timedOut = true;
        process.kill();
    });
    process.start();
    if (!process.waitForStarted(-1) && process.state() == QProcess::NotRunning) {
        result.status = ProcessStatus::FailedToStart;
        result.message = failedToStart(request.program, process.errorString());
        return result;
    }
    deadline.start(request.timeoutSeconds * 1000);
    // Paints and timers go on meanwhile; user input is left for after the run.
    if (process.state() != QProcess::NotRunning) loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (process.state() != QProcess::NotRunning) process.waitForFinished(-1);

    if (timedOut) {
        result.status = ProcessStatus::TimedOut;
        result.message = "The program " + request.program + " did not finish within " +
                         std::to_string(request.timeoutSeconds) + " seconds and was stopped.";
    } else if (process.exitStatus() == QProcess::CrashExit) {
        result.status = ProcessStatus::Crashed;
        result.message = "The program " + request.program + " ended abnormally.";
    } else {
        result.exitCode = process.exitCode();
    }
    return result;
}

}  // namespace arborex
