#include "app/Renderer.h"

#include <QCoreApplication>
#include <QDir>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QProcess>
#include <QQuickWindow>

#include <iostream>

namespace palvera {

RendererChoice::RendererChoice()
{
    m_isOpen = !qEnvironmentVariableIsSet("QT_QUICK_BACKEND");
    if (!m_isOpen || !hasGraphicsDevice(QStringLiteral("/dev")))
        return;
    m_asked = std::make_unique<QProcess>();
    m_asked->setStandardErrorFile(QProcess::nullDevice());
    m_asked->start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(rendererQuestion)});
}

RendererChoice::~RendererChoice() = default;

void RendererChoice::settle()
{
    constexpr int longest = 3000; // ms
    if (!m_isOpen)
        return;
    const bool isAnswered =
        m_asked && m_asked->waitForFinished(longest) && m_asked->exitStatus() == QProcess::NormalExit;
    if (isProcessor(isAnswered ? m_asked->readAllStandardOutput().trimmed() : QByteArray()))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    m_asked.reset();
}

bool hasGraphicsDevice(const QString& devices)
{
    const QDir folder(devices);
    // Those of the kernel's graphics drivers, of one that brings its own, and of Windows below a Linux guest.
    return !QDir(folder.filePath(QStringLiteral("dri")))
                .entryList({QStringLiteral("renderD*")}, QDir::System | QDir::Files)
                .isEmpty() ||
           folder.exists(QStringLiteral("nvidiactl")) || folder.exists(QStringLiteral("dxg"));
}

bool isProcessor(const QByteArray& renderer)
{
    const auto name = renderer.toLower();
    for (const char* one : {"llvmpipe", "softpipe", "swrast", "software rasterizer", "swiftshader", "lavapipe"})
        if (name.contains(one))
            return true;
    return name.isEmpty();
}

int sayRenderer()
{
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext context;
    if (!context.create() || !context.makeCurrent(&surface))
        return 1;
    const auto* name = context.functions()->glGetString(GL_RENDERER);
    if (!name)
        return 1;
    std::cout << reinterpret_cast<const char*>(name) << std::endl;
    return 0;
}

} // namespace palvera
