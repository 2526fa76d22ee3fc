#pragma once

#include "arkin/desktop/pictures/TurningModel.h"

#include <functional>
#include <optional>
#include <QImage>
#include <QWidget>

namespace zn::arkin {

/// A picture as large as the place allows, or a sentence in its place. Once it has the model, dragging with the mouse
/// or the arrow keys turn it, the wheel, "+" and "-" make it larger and smaller, and a double click or Home shows it as
/// it was first.
class PicturePane : public QWidget {
public:
    explicit PicturePane(QWidget* parent = nullptr);

    void show(const QImage& picture);
    void tell(const QString& sentence);
    /// For the picture that is shown.
    void setModel(TurningModel model);
    /// As it is seen, turned or not.
    const QImage& picture() const { return m_turned.isNull() ? m_picture : m_turned; }
    const QString& sentence() const { return m_sentence; }

    /// The pointer or the focus comes to a picture whose model isn't here: the user may want to turn it.
    std::function<void()> modelWanted;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void forgetModel();
    void askForModel();
    /// By so many degrees about the upright and about the level axis of the picture.
    void turn(double aside, double over, bool fine);
    void zoom(double factor);
    void draw(bool fine);
    void showFirst();

    QImage m_picture;
    QString m_sentence;
    std::optional<TurningModel> m_model;
    bool m_asked = false;
    QImage m_turned; ///< null as long as the picture is as it was made
    QQuaternion m_look;
    double m_zoom = 1.0;
    QPoint m_dragged; ///< where the mouse was last
};

} // namespace zn::arkin
