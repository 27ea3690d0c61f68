#pragma once

#include "async/Failure.h"
#include "desktop/InstallerConnection.h"
#include "desktop/Workspace.h"

#include <QFile>

#include <list>
#include <optional>

namespace palvera {

/// An installer in memory, on which one answers by hand.
class FakeInstaller {
public:
    struct Call {
        QByteArray image; ///< what the file holds; of a preparation
        QString path;
        QString target;
        AnnouncedBuild announced;
        PVInstallerProtocol::Reply reply;
        std::function<void(const InstallerTrouble&)> fail;
    };
    std::list<Call> calls; ///< the open ones and those that were answered
    int connections = 0;
    std::optional<InstallerTrouble> trouble;   ///< of every call
    std::optional<QString> answer = QString(); ///< to every call; else by hand
    InstallerConnection* connection = nullptr; ///< the last one, while there is one

    std::unique_ptr<InstallerConnection> connect()
    {
        ++connections;
        return std::make_unique<Connection>(*this);
    }

private:
    struct Proxy final : PVInstallerProtocol {
        FakeInstaller& installer;
        std::function<void(const InstallerTrouble&)> failed;

        Proxy(FakeInstaller& owner, std::function<void(const InstallerTrouble&)> onFailed)
            : installer(owner), failed(std::move(onFailed))
        {}
        void prepareWithImage(const QString& image, const QString& target, const AnnouncedBuild& announced,
                              Reply reply) override
        {
            QFile file(image);
            std::ignore = file.open(QIODevice::ReadOnly);
            take({file.readAll(), image, target, announced, std::move(reply), failed});
        }
        void installWithTarget(const QString& target, Reply reply) override
        {
            take({{}, {}, target, {}, std::move(reply), failed});
        }
        void take(Call call) const
        {
            installer.calls.push_back(std::move(call));
            if (installer.trouble)
                installer.calls.back().fail(*installer.trouble);
            else if (installer.answer)
                installer.calls.back().reply(*installer.answer);
        }
    };
    struct Connection final : InstallerConnection {
        FakeInstaller& installer;

        explicit Connection(FakeInstaller& owner) : installer(owner) { installer.connection = this; }
        ~Connection() override
        {
            if (installer.connection == this)
                installer.connection = nullptr;
        }
        std::unique_ptr<PVInstallerProtocol> remoteObject(std::function<void(const InstallerTrouble&)> failed) override
        {
            return std::make_unique<Proxy>(installer, std::move(failed));
        }
    };
};

/// A desktop on which nothing happens by itself.
struct FakeWorkspace final : Workspace {
    int opened = 0;
    int terminated = 0;
    QString problem; ///< why the program cannot be started anew

    Task<void> openApplication() override
    {
        ++opened;
        if (!problem.isEmpty())
            throw Failure(problem);
        co_return;
    }
    void terminate() override { ++terminated; }
};

} // namespace palvera
