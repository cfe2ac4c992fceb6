#pragma once

#include "Linux/Updates/UpdateText.h"

#include <QObject>
#include <QProcess>

#include <filesystem>
#include <functional>
#include <optional>

namespace tessary::updates {

/// Gives a file to the program that the desktop has registered for its kind, with the rights that
/// we have ourselves, and leaves it alone then. Destruction before that ends it without an answer.
class PackageHandler : public QObject {
public:
    /// `done` is called once, from the event loop, and may destroy this object: with nothing when
    /// the desktop was asked to start the handler, else with why not, as when none is registered.
    PackageHandler(const std::filesystem::path& package,
                   std::function<void(std::optional<Failure>)> done);
    ~PackageHandler() override;
    PackageHandler(const PackageHandler&) = delete;
    PackageHandler& operator=(const PackageHandler&) = delete;

private:
    using Step = void (PackageHandler::*)(const QString& output);

    void query(const QStringList& question, Step next);
    void proceed();
    void queryProgram(const QString& kind);
    void handOver(const QString& program);
    void answer(const std::optional<Failure>& failure);
    Failure failure(const QString& reason) const;

    QString package_;
    std::function<void(std::optional<Failure>)> done_;
    QProcess query_;
    Step next_ = nullptr; ///< what the query's output is for
};

} // namespace tessary::updates
