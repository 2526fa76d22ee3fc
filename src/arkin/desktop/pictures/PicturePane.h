#pragma once

#include <QImage>
#include <QWidget>

namespace zn::arkin {

/// A picture as large as the place allows, or a sentence in its place.
class PicturePane : public QWidget {
public:
    explicit PicturePane(QWidget* parent = nullptr);

    void show(const QImage& picture);
    void tell(const QString& sentence);
    const QImage& picture() const { return m_picture; }
    const QString& sentence() const { return m_sentence; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_picture;
    QString m_sentence;
};

} // namespace zn::arkin
