// SPDX-License-Identifier: MIT
// Makes an application's icon of a drawing: icon_file DRAWING.svg ICON.icns for a Mac's bundle, or
// icon_file DRAWING.svg ICON.png WIDTH for a single image.
#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>
#include <cstdio>
#include <cstdlib>

namespace {

/// The parts of an icon file that hold a PNG image: their type and the image's width in pixels. A type belongs to
/// a size in points and to a scale, so that some widths stand here twice.
struct Part {
    const char* type;
    int width;
};
constexpr Part parts[] = {{"ic11", 32},  {"ic12", 64},  {"ic07", 128}, {"ic13", 256},
                          {"ic08", 256}, {"ic14", 512}, {"ic09", 512}, {"ic10", 1024}};

QByteArray bigEndian(qsizetype number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(static_cast<quint32>(number), bytes.data());
    return bytes;
}

/// Each part, and the file as a whole: the type, the length with these eight bytes, the content.
QByteArray wrapped(const char* type, const QByteArray& content)
{
    return type + bigEndian(content.size() + 8) + content;
}

QByteArray png(QSvgRenderer& drawing, int width)
{
    QImage image(width, width, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    QBuffer buffer;
    image.save(&buffer, "PNG");
    return buffer.data();
}

QByteArray bundleIcon(QSvgRenderer& drawing)
{
    QByteArray content;
    for (const Part& part : parts)
        content += wrapped(part.type, png(drawing, part.width));
    return wrapped("icns", content);
}

} // namespace

int main(int argc, char** argv)
{
    const int width = argc == 4 ? std::atoi(argv[3]) : 0;
    if (argc != 3 && width <= 0) {
        std::fputs("usage: icon_file DRAWING.svg ICON.icns, or icon_file DRAWING.svg ICON.png WIDTH\n", stderr);
        return 2;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid()) {
        std::fprintf(stderr, "%s is not a drawing.\n", argv[1]);
        return 1;
    }
    const QByteArray whole = width > 0 ? png(drawing, width) : bundleIcon(drawing);
    QFile file(QString::fromLocal8Bit(argv[2]));
    if (!file.open(QIODevice::WriteOnly) || file.write(whole) != whole.size() || !file.flush()) {
        std::fprintf(stderr, "%s: %s\n", argv[2], qPrintable(file.errorString()));
        return 1;
    }
    return 0;
}
