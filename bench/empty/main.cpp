// SPDX-License-Identifier: MIT
// What a program of windows costs before it does anything: an empty window and an icon in the tray. The whole
// program is measured against it.
#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QWidget>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QPixmap pixmap(22, 22);
    pixmap.fill(Qt::black);
    QSystemTrayIcon icon{QIcon(pixmap)};
    icon.show();
    QWidget window;
    window.setWindowTitle("Empty window");
    window.resize(340, 342);
    window.show();
    return QApplication::exec();
}
