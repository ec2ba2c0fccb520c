#include "toolicons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <cmath>

using ToolIcons::Picture;

namespace {

const QColor Outline(0x2b, 0x3a, 0x55);
const QColor Title(0x35, 0x6f, 0xc4);
const QColor Body(0xf4, 0xf7, 0xfc);
const QColor Plus(0x2e, 0x9d, 0x3e);
const QColor Filter(0xd9, 0x8a, 0x1c);

// A box with a title bar, as the pages show classes. All drawing is on a 32 × 32 grid.
void box(QPainter& p, const QRectF& r)
{
    p.setPen(QPen(Outline, 1.5));
    p.setBrush(Body);
    p.drawRoundedRect(r, 2, 2);
    p.setPen(Qt::NoPen);
    p.setBrush(Title);
    p.drawRect(QRectF(r.left() + 0.75, r.top() + 0.75, r.width() - 1.5, r.height() * 0.3));
}

void plus(QPainter& p, const QPointF& c)
{
    p.setPen(Qt::NoPen);
    p.setBrush(Plus);
    p.drawEllipse(c, 7, 7);
    p.setPen(QPen(Qt::white, 2.5, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(c + QPointF(-4, 0), c + QPointF(4, 0));
    p.drawLine(c + QPointF(0, -4), c + QPointF(0, 4));
}

void funnel(QPainter& p, const QRectF& r)
{
    QPainterPath path;
    path.moveTo(r.left(), r.top());
    path.lineTo(r.right(), r.top());
    path.lineTo(r.center().x() + r.width() * 0.12, r.top() + r.height() * 0.55);
    path.lineTo(r.center().x() + r.width() * 0.12, r.bottom());
    path.lineTo(r.center().x() - r.width() * 0.12, r.bottom() - r.height() * 0.12);
    path.lineTo(r.center().x() - r.width() * 0.12, r.top() + r.height() * 0.55);
    path.closeSubpath();
    p.setPen(QPen(Outline, 1.5));
    p.setBrush(Filter);
    p.drawPath(path);
}

void arrow(QPainter& p, bool down)
{
    QPainterPath path;
    if (down) {
        path.moveTo(12, 4);
        path.lineTo(20, 4);
        path.lineTo(20, 16);
        path.lineTo(27, 16);
        path.lineTo(16, 28);
        path.lineTo(5, 16);
        path.lineTo(12, 16);
    } else {
        path.moveTo(12, 28);
        path.lineTo(20, 28);
        path.lineTo(20, 16);
        path.lineTo(27, 16);
        path.lineTo(16, 4);
        path.lineTo(5, 16);
        path.lineTo(12, 16);
    }
    path.closeSubpath();
    p.setPen(QPen(Outline, 1.5));
    p.setBrush(Title);
    p.drawPath(path);
}

void draw(QPainter& p, Picture picture)
{
    switch (picture) {
    case Picture::NewMainClass:
        box(p, QRectF(3, 5, 22, 17));
        plus(p, QPointF(24, 24));
        break;
    case Picture::NewSubClass:
        p.setPen(QPen(Outline, 1.5));
        p.drawLine(QPointF(10, 12), QPointF(10, 20));
        box(p, QRectF(3, 2, 15, 11));
        box(p, QRectF(5, 18, 15, 11));
        plus(p, QPointF(24, 24));
        break;
    case Picture::NewFilter:
        funnel(p, QRectF(3, 4, 20, 22));
        plus(p, QPointF(24, 24));
        break;
    case Picture::DeleteObject:
        box(p, QRectF(3, 3, 20, 16));
        p.setPen(QPen(QColor(0xc8, 0x25, 0x25), 4, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(15, 15), QPointF(28, 28));
        p.drawLine(QPointF(28, 15), QPointF(15, 28));
        break;
    case Picture::DefaultClass: {
        box(p, QRectF(3, 3, 20, 16));
        QPainterPath star;
        const QPointF c(22, 22);
        for (int i = 0; i < 10; ++i) {
            const double r = i % 2 ? 4.0 : 9.0;
            const double a = M_PI / 2 + i * M_PI / 5;
            const QPointF pt(c.x() + r * std::cos(a), c.y() - r * std::sin(a));
            i ? star.lineTo(pt) : star.moveTo(pt);
        }
        star.closeSubpath();
        p.setPen(QPen(QColor(0x8a, 0x62, 0x00), 1.2));
        p.setBrush(QColor(0xf5, 0xc2, 0x18));
        p.drawPath(star);
        break;
    }
    case Picture::Calc:
        p.setPen(QPen(Outline, 1.5));
        p.setBrush(QColor(0xe2, 0xe6, 0xee));
        p.drawRoundedRect(QRectF(6, 2, 20, 28), 3, 3);
        p.setBrush(QColor(0xcf, 0xe8, 0xcf));
        p.drawRect(QRectF(9, 5, 14, 6));
        p.setPen(Qt::NoPen);
        p.setBrush(Outline);
        for (int row = 0; row < 3; ++row)
            for (int col = 0; col < 3; ++col)
                p.drawRect(QRectF(9.5 + col * 5, 14 + row * 5, 3, 3));
        break;
    case Picture::Down:
    case Picture::Up:
        arrow(p, picture == Picture::Down);
        break;
    case Picture::Problems: {
        box(p, QRectF(2, 3, 20, 16));
        QPainterPath sign;
        sign.moveTo(21, 11);
        sign.lineTo(31, 29);
        sign.lineTo(11, 29);
        sign.closeSubpath();
        p.setPen(QPen(QColor(0x8a, 0x62, 0x00), 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.setBrush(QColor(0xf5, 0xc2, 0x18));
        p.drawPath(sign);
        p.setPen(QPen(Outline, 2.5, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(21, 17), QPointF(21, 23));
        p.drawPoint(QPointF(21, 26.5));
        break;
    }
    case Picture::Program:
        p.setPen(QPen(Outline, 2));
        p.drawLine(QPointF(16, 10), QPointF(8, 20));
        p.drawLine(QPointF(16, 10), QPointF(24, 20));
        box(p, QRectF(9, 2, 14, 10));
        box(p, QRectF(1, 19, 14, 10));
        funnel(p, QRectF(19, 18, 12, 12));
        break;
    }
}

} // namespace

QIcon ToolIcons::icon(Picture picture)
{
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64}) {
        QPixmap pm(size, size);
        pm.fill(Qt::transparent);
        QPainter p(&pm);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(size / 32.0, size / 32.0);
        draw(p, picture);
        p.end();
        icon.addPixmap(pm);
    }
    return icon;
}
