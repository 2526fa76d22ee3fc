// Keys and wheel as the window system sends them, from the keyboard and the pointer to whatever is there.

#include "arkin/desktop/PropertyDialog.h"
#include "tests/arkin/desktop/DesktopFixture.h"

#include <algorithm>
#include <cstdlib>
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QScrollBar>
#include <QSpinBox>
#include <xcb/xtest.h>

namespace zn::arkin::test {

namespace {

constexpr xcb_keysym_t controlKey = 0xFFE3;
constexpr xcb_keysym_t pageDownKey = 0xFF56;
constexpr xcb_keysym_t pageUpKey = 0xFF55;
constexpr std::uint8_t wheelDown = 5;

/// The devices of the display.
class Devices {
public:
    Devices()
        : m_display(xcb_connect(nullptr, nullptr))
        , m_setup(xcb_get_setup(m_display))
        , m_root(xcb_setup_roots_iterator(m_setup).data->root)
    {
    }
    Devices(const Devices&) = delete;
    Devices& operator=(const Devices&) = delete;
    ~Devices() { xcb_disconnect(m_display); }

    void pressWithControl(xcb_keysym_t key)
    {
        send(XCB_KEY_PRESS, codeOf(controlKey));
        send(XCB_KEY_PRESS, codeOf(key));
        send(XCB_KEY_RELEASE, codeOf(key));
        send(XCB_KEY_RELEASE, codeOf(controlKey));
    }
    /// Brings the pointer over the control and turns the wheel towards the user.
    void turnWheelOver(const QWidget& control)
    {
        const QPoint at = control.mapToGlobal(control.rect().center());
        xcb_warp_pointer(m_display, XCB_NONE, m_root, 0, 0, 0, 0, static_cast<std::int16_t>(at.x()),
            static_cast<std::int16_t>(at.y()));
        send(XCB_BUTTON_PRESS, wheelDown);
        send(XCB_BUTTON_RELEASE, wheelDown);
    }

private:
    void send(std::uint8_t type, std::uint8_t detail)
    {
        xcb_test_fake_input(m_display, type, detail, XCB_CURRENT_TIME, m_root, 0, 0, 0);
        xcb_flush(m_display);
    }
    std::uint8_t codeOf(xcb_keysym_t key) const
    {
        const auto first = m_setup->min_keycode;
        const auto count = static_cast<std::uint8_t>(m_setup->max_keycode - first + 1);
        auto* const map
            = xcb_get_keyboard_mapping_reply(m_display, xcb_get_keyboard_mapping(m_display, first, count), nullptr);
        const xcb_keysym_t* const keys = xcb_get_keyboard_mapping_keysyms(map);
        const int length = xcb_get_keyboard_mapping_keysyms_length(map);
        const auto place = std::find(keys, keys + length, key) - keys;
        const auto code = static_cast<std::uint8_t>(first + place / map->keysyms_per_keycode);
        std::free(map);
        return code;
    }

    xcb_connection_t* m_display;
    const xcb_setup_t* m_setup;
    xcb_window_t m_root;
};

} // namespace

class GestureTest : public DesktopFixture {
protected:
    GestureTest()
        : setup(host, define())
        , dialog(setup)
    {
        dialog.move(0, 0);
        dialog.show();
        dialog.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }
    template <class Control> Control* on(const char* role) { return find<Control>(dialog, role); }
    bool waitForPage(int row)
    {
        return QTest::qWaitFor([&] { return on<QListWidget>("pageTitles")->currentRow() == row; });
    }

    TaskSetup setup;
    PropertyDialog dialog;
    Devices devices;
};

TEST_F(GestureTest, PageKeysTurnPagesWhereverTheFocusIs)
{
    for (const char* role : {"formatFirst", "listFirst", "numberFirst", "editFirst", "moreFirst"}) {
        on<QWidget>(role)->setFocus();
        devices.pressWithControl(pageDownKey);
        EXPECT_TRUE(waitForPage(1)) << role;
        devices.pressWithControl(pageUpKey);
        EXPECT_TRUE(waitForPage(0)) << role;
    }
    on<QWidget>("pageTitles")->setFocus();
    devices.pressWithControl(pageUpKey);
    EXPECT_TRUE(waitForPage(2)) << "round the end";
    for (const char* page : {"First", "Second"}) {
        EXPECT_EQ(on<QComboBox>(("format" + std::string(page)).c_str())->currentText(), "STL");
        EXPECT_EQ(on<QListWidget>(("list" + std::string(page)).c_str())->currentRow(), 0);
        EXPECT_EQ(on<QSpinBox>(("number" + std::string(page)).c_str())->value(), 0);
    }
}

TEST_F(GestureTest, TheWheelScrollsThePageAndChangesNothing)
{
    on<QCheckBox>("moreFirst")->click();
    const auto areas = dialog.findChildren<PageArea*>();
    auto& area = **std::ranges::find_if(areas, [](const PageArea* each) { return each->isVisible(); });
    QScrollBar& bar = *area.verticalScrollBar();
    // The dialog grows with its page first.
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.height() > 350; }));
    dialog.resize(dialog.width(), 260);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar.maximum() > 0; }));
    on<QWidget>("editFirst")->setFocus();
    for (const char* role : {"formatFirst", "numberFirst"}) {
        bar.setValue(0);
        devices.turnWheelOver(*on<QWidget>(role));
        EXPECT_TRUE(QTest::qWaitFor([&] { return bar.value() > 0; })) << role;
    }
    EXPECT_EQ(dialog.focusWidget(), on<QWidget>("editFirst"));
    EXPECT_EQ(on<QSpinBox>("numberFirst")->value(), 0);
    bar.setValue(0);
    on<QWidget>("formatFirst")->setFocus();
    devices.turnWheelOver(*on<QWidget>("formatFirst"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.value() > 0; }));
    EXPECT_EQ(on<QComboBox>("formatFirst")->currentText(), "STL");
    // A number follows the wheel where the user is at it.
    bar.setValue(0);
    on<QSpinBox>("numberFirst")->setValue(5);
    on<QWidget>("numberFirst")->setFocus();
    devices.turnWheelOver(*on<QWidget>("numberFirst"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return on<QSpinBox>("numberFirst")->value() == 4; }));
    EXPECT_EQ(bar.value(), 0);
}

} // namespace zn::arkin::test
