#pragma once

#include <QObject>
#include <string>

namespace zn::arkin {

/// While it lives, every modal dialog is given up at once instead of waiting for a person who isn't there, and what it
/// says is kept.
class UnseenDialogs : public QObject {
public:
    UnseenDialogs();
    ~UnseenDialogs() override;

    /// What the dialogs have said since the last call.
    std::string take();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    std::string m_said;
};

} // namespace zn::arkin
