#pragma once

#include "arkin/reftree/RefTreeRegistration.h"
#include "arkin/tasks/LaunchInstance.h"
#include "platform/linux/FolderPrinters.h"
#include "tests/support/pages/PageFixture.h"

#include <QTabWidget>
#include <QTreeView>

namespace zn::test {

/// The print dialog over an assembly in the real vault:
///
///   top.zenasm ─ bolt.zenprt (made for version 1, by now 2), notes.txt, sub.zenasm ─ bolt.zenprt, washer.zenprt
///   with the drawings top.zendrw and bolt.zendrw
class PrintFixture : public PageFixture {
protected:
    using Place = zn::arkin::Place;

    PrintFixture()
    {
        zn::arkin::registerRefTree(
            ports.registry, platform.machine.files().fromMachine(std::string(ZN_BIN_DIR) + "/libarkin-reftree.so"));
        const Place bolt = m_vault.addReleased("parts/bolt.zenprt", "bolt");
        const Place washer = m_vault.addReleased("parts/washer.zenprt", "washer");
        const Place notes = m_vault.addReleased("notes.txt", "notes");
        const Place sub = m_vault.addReferring("sub.zenasm", {bolt, washer});
        top = m_vault.addReferring("top.zenasm", {sub, bolt, notes});
        m_vault.addReferring("top.zendrw", {top});
        m_vault.addReferring("bolt.zendrw", {bolt});
        m_vault.change(bolt, "parts/bolt.zenprt", "a longer bolt");
        select({top});
    }

    void select(const std::vector<Place>& places)
    {
        selection.clear();
        for (const Place& place : places)
            selection.push_back({place.fileId, place.folderId, u"", u"", ArkItemType::File, -1});
    }

    /// Launches a task with these variables; what the dialog wrote is in `written()` afterwards.
    bool launch(zn::arkin::Variables variables, bool show)
    {
        run = launchOf(std::move(variables));
        ArkCmd cmd;
        cmd.parentWindow = static_cast<std::int32_t>(window.winId());
        cmd.taskObject = run;
        return pages().showPrintDialog(vault, &cmd, selection, show);
    }

    /// "name=value", without the variables' common beginning.
    std::vector<std::string> written() const
    {
        std::vector<std::string> lines;
        for (const auto& [name, value] : run->ownVariables())
            lines.push_back(toUtf8(name.substr(std::size("__printer_") - 1) + u"=" + value.toText()));
        return lines;
    }

    /// "name@version" of each file of the host's selection.
    std::vector<std::string> selected() const
    {
        std::vector<std::string> lines;
        for (const ArkSelItem& item : selection)
            lines.push_back(std::filesystem::path(toUtf8(item.path).substr(toUtf8(item.path).rfind('\\') + 1)).string()
                + "@" + std::to_string(item.version));
        return lines;
    }

    /// Presses a button when the present step of the test has ended, since what it opens may wait for the next answer.
    static void pressLater(QWidget& dialog, const char* role)
    {
        auto* button = find<QAbstractButton>(dialog, role);
        QTimer::singleShot(0, button, [button] { button->click(); });
    }

    /// The rows that are open, as "  [x] bolt.zenprt 1": indented, with box, name, version and state.
    static std::vector<std::string> outline(QWidget& dialog)
    {
        std::vector<std::string> lines;
        outline(*find<QTreeView>(dialog, "fileTree"), {}, "", lines);
        return lines;
    }

    /// Makes the row current that these names lead to, expanding on the way.
    static QModelIndex go(QWidget& dialog, const QStringList& names)
    {
        auto& tree = *find<QTreeView>(dialog, "fileTree");
        QModelIndex index;
        for (const QString& name : names) {
            if (index.isValid())
                tree.expand(index);
            const auto found
                = tree.model()->match(tree.model()->index(0, 0, index), Qt::DisplayRole, name, 1, Qt::MatchExactly);
            if (found.isEmpty())
                throw std::runtime_error("The tree has no row " + name.toStdString() + ".");
            index = found.front();
        }
        tree.setCurrentIndex(index);
        return index;
    }

    /// A click on the row's check box.
    static void clickBox(QWidget& dialog, const QModelIndex& index)
    {
        auto& tree = *find<QTreeView>(dialog, "fileTree");
        tree.scrollTo(index);
        const QRect row = tree.visualRect(index);
        QTest::mouseClick(
            tree.viewport(), Qt::LeftButton, Qt::NoModifier, {row.left() + row.height() / 2, row.center().y()});
    }

    Place top;
    ArkSelection selection;
    std::shared_ptr<zn::arkin::LaunchInstance> run;

private:
    static void outline(
        const QTreeView& tree, const QModelIndex& parent, const std::string& indent, std::vector<std::string>& lines)
    {
        const auto& model = *tree.model();
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex index = model.index(row, 0, parent);
            const auto text = [&](int column) { return index.siblingAtColumn(column).data().toString().toStdString(); };
            const QVariant box = index.data(Qt::CheckStateRole);
            const std::string tick = !box.isValid() ? " - " : box.toInt() == Qt::Checked ? "[x]" : "[ ]";
            lines.push_back(indent + tick + " " + text(0) + " " + text(2) + (text(1).empty() ? "" : " " + text(1)));
            if (tree.isExpanded(index))
                outline(tree, index, indent + "  ", lines);
        }
    }
};

} // namespace zn::test
