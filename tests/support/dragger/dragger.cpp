// A window at a place of the screen, out of which a file is dragged, or into which one is dropped.
//
// Usage: veltrix-dragger X Y [FILE]
// With a file, a drag of it begins as soon as the mouse is moved with its button down in the window;
// "dragged" and the action that the other end chose are printed. Without, each dropped file is printed: "url"
// and its address, "bytes" and its content as hexadecimal numbers.

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

#include <cstdio>

namespace
{

void print(const QByteArray &line)
{
    std::puts(line.constData());
    std::fflush(stdout);
}

class Dragger : public QWidget
{
public:
    explicit Dragger(const QString &file)
        : m_file(file)
    {
        setAcceptDrops(file.isEmpty());
    }

protected:
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (m_file.isEmpty() || !event->buttons().testFlag(Qt::LeftButton)) {
            return;
        }
        auto *content = new QMimeData;
        content->setUrls({QUrl::fromLocalFile(m_file)});
        auto *drag = new QDrag(this);
        drag->setMimeData(content);
        print("dragged " + QByteArray::number(int(drag->exec(Qt::CopyAction | Qt::MoveAction))));
    }

    void dragEnterEvent(QDragEnterEvent *event) override { event->acceptProposedAction(); }

    void dropEvent(QDropEvent *event) override
    {
        event->acceptProposedAction();
        for (const QUrl &url : event->mimeData()->urls()) {
            QFile file(url.toLocalFile());
            print("url " + url.toEncoded());
            print("bytes " + (file.open(QIODevice::ReadOnly) ? file.readAll().toHex() : "none"));
        }
    }

private:
    QString m_file;
};

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    Dragger window(arguments.value(3));
    window.setWindowFlags(Qt::FramelessWindowHint);
    window.setGeometry(arguments.value(1).toInt(), arguments.value(2).toInt(), 100, 100);
    window.show();
    print("ready");
    return QApplication::exec();
}
