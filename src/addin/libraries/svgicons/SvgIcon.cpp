#include "addin/libraries/svgicons/SvgIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>

namespace zn {

namespace {

/// What the pictures' neutral colours are on a dark ground. The other colours suit both.
struct DarkColour {
    const char* drawn;
    const char* dark;
};
constexpr DarkColour darkColours[] = {
    {"#3a3f47", "#d5d9df"}, // lines
    {"#ffffff", "#3c424a"}, // paper
    {"#cfe3f8", "#2b4a6b"}, // plates
    {"#8a9099", "#9aa1ab"}, // writing
};

constexpr qreal disabledOpacity = 0.4;

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

QByteArray adapted(QByteArray picture, bool dark)
{
    if (dark) {
        for (const DarkColour& colour : darkColours)
            picture.replace(colour.drawn, colour.dark);
    }
    return picture;
}

class SvgIconEngine final : public QIconEngine {
public:
    explicit SvgIconEngine(QByteArray picture)
        : m_picture(std::move(picture))
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        QSvgRenderer renderer(adapted(m_picture, isDark(QGuiApplication::palette())));
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(painter->opacity() * disabledOpacity);
        renderer.render(painter, rect);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        const Kept wanted{size, mode, isDark(QGuiApplication::palette()), {}};
        for (const Kept& kept : m_kept) {
            if (kept.size == wanted.size && kept.mode == wanted.mode && kept.dark == wanted.dark)
                return kept.pixmap;
        }
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        painter.end();
        m_kept.push_back(wanted);
        m_kept.back().pixmap = pixmap;
        return pixmap;
    }

    QIconEngine* clone() const override { return new SvgIconEngine(m_picture); }
    QString key() const override { return QStringLiteral("zn-svg"); }
    bool isNull() override { return m_picture.isEmpty(); }

private:
    /// A picture that was drawn before; a program shows an icon in a few sizes only.
    struct Kept {
        QSize size;
        QIcon::Mode mode;
        bool dark;
        QPixmap pixmap;
    };

    QByteArray m_picture;
    std::vector<Kept> m_kept;
};

} // namespace

QIcon svgIcon(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new SvgIconEngine(file.readAll()));
}

} // namespace zn
