// SPDX-License-Identifier: GPL-3.0-or-later
// The reference for the program's start: the least that a Qt program does to show an empty window, or a window with a
// picture. Writes "painted" to standard error after the first paint and ends.
#include <cstdio>
#include <QtGui/QImageReader>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace {

class Window : public QWidget {
  public:
    explicit Window(const QImage& picture) : m_picture(picture) { resize(1024, 730); }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        if (!m_picture.isNull()) painter.drawImage(rect(), m_picture);
        painter.end();
        QMetaObject::invokeMethod(
            qApp,
            [] {
                std::fputs("painted\n", stderr);
                QApplication::quit();
            },
            Qt::QueuedConnection);
    }

  private:
    QImage m_picture;
};

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QImage picture;
    if (argc > 1) {
        QImageReader::setAllocationLimit(0);
        picture = QImageReader(QString::fromLocal8Bit(argv[1])).read();
    }
    Window window(picture);
    window.show();
    return application.exec();
}
