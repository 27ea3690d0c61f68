// A stand-in for a file manager: a window in which pressing and moving the pointer drags the files that the program was
// given, to be moved if nothing else is asked for. Says what became of each drag.

#include <QBackingStore>
#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QRasterWindow>
#include <QUrl>

#include <iostream>

namespace {

class Source : public QRasterWindow {
public:
    explicit Source(QList<QUrl> files) : m_files(std::move(files)) {}

private:
    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (event->buttons() != Qt::LeftButton)
            return;
        auto* data = new QMimeData;
        data->setUrls(m_files);
        auto* drag = new QDrag(this);
        drag->setMimeData(data);
        const auto done = drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, Qt::MoveAction);
        std::cout << (done == Qt::CopyAction ? "copied" : done == Qt::IgnoreAction ? "refused" : "moved") << std::endl;
    }
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(0, 0, width(), height(), Qt::darkGreen); }

    const QList<QUrl> m_files;
};

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (argc < 2)
        return 2;
    QList<QUrl> files;
    for (int i = 1; i < argc; ++i)
        files.append(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[i])));
    Source source(files);
    source.setTitle("Files");
    source.setGeometry(1100, 760, 150, 100);
    source.show();
    return QGuiApplication::exec();
}
