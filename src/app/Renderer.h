#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

class QProcess;

namespace palvera {

/// Chooses who draws the windows. Where OpenGL is a program that runs on the processor, as in virtual machines and on
/// remote desktops, Qt's own renderer draws the same with a fraction of its time and 100 MB less: it draws what has
/// changed, not whole windows.
///
/// Which OpenGL there is another process of this program finds out, since the driver stays in whichever has asked it.
/// QT_QUICK_BACKEND wins. Main thread, within a QGuiApplication.
class RendererChoice {
public:
    /// Begins to ask, unless the answer is known already.
    RendererChoice();
    ~RendererChoice();
    /// Holds for all windows that are made from here on. Waits for the answer, three seconds at most.
    void settle();

private:
    std::unique_ptr<QProcess> m_asked;
    bool m_isOpen = true;
};

/// Whether there is something in `devices`, such as "/dev", that draws.
bool hasGraphicsDevice(const QString& devices);
/// Whether OpenGL's word for its renderer, empty where there is none, stands for the processor.
bool isProcessor(const QByteArray& renderer);

/// What the other process is started with, alone, and what it does then: it says the name of OpenGL's renderer on
/// standard output and returns the process's status. Within a QGuiApplication.
inline constexpr const char* rendererQuestion = "--renderer";
int sayRenderer();

} // namespace palvera
