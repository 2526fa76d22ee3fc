#include "arkin/desktop/explorer/CompareDialog.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/pictures/PictureDiff.h"
#include "arkin/desktop/pictures/PictureMaker.h"
#include "arkin/desktop/pictures/PicturePane.h"
#include "arkin/tasks/ModelMeasures.h"
#include "base/Paths.h"

#include <cstring>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QTreeWidget>

namespace zn::arkin {

namespace {

QString kindWord(Difference::Kind kind)
{
    switch (kind) {
    case Difference::Kind::Content:
        return own("Content");
    case Difference::Kind::Part:
        return own("Configuration or sheet");
    case Difference::Kind::Card:
        return own("Card");
    case Difference::Kind::Measure:
        return own("Measure");
    case Difference::Kind::Body:
        return own("Body");
    default:
        return own("Reference");
    }
}

QString sideText(const Difference& difference, const zn::Text& side)
{
    if (difference.kind == Difference::Kind::Content)
        return own("%1 bytes").arg(QLocale().toString(shown(side).toLongLong()));
    if (difference.kind == Difference::Kind::Measure)
        return QLocale().toString(shown(side).toDouble(), 'g', 7) + ' ' + shown(difference.unit);
    return shown(side);
}

/// Measures have names of their own.
QString nameText(const Difference& difference)
{
    if (difference.kind == Difference::Kind::Reference)
        return shown(zn::pathFileName(difference.name));
    if (difference.kind != Difference::Kind::Measure)
        return shown(difference.name);
    QString name = shown(difference.name);
    for (const auto& [english, text] :
        {std::pair("volume", own("Volume")), std::pair("area", own("Surface")), std::pair("size x", own("Size in x")),
            std::pair("size y", own("Size in y")), std::pair("size z", own("Size in z"))})
        if (name.startsWith(english))
            return name.replace(0, static_cast<qsizetype>(std::strlen(english)), text);
    return name;
}

} // namespace

CompareDialog::CompareDialog(
    const DailyHost& host, const Place& place, std::int32_t before, std::int32_t after, QWidget* parent)
    : QDialog(parent)
    , m_host(host)
    , m_versions{before, after}
{
    setObjectName("compare");
    setWindowTitle(own("Versions of “%1”").arg(shown(host.tasks.opened->file(place.fileId).name)));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(makePictures(place), 3);
    layout->addWidget(makeList(place), 2);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    resizeByFont(*this, 120, 36);
}

QWidget* CompareDialog::makePictures(const Place& place)
{
    auto* const pictures = new QWidget;
    auto* const grid = new QGridLayout(pictures);
    grid->setRowStretch(1, 1);
    for (const int column : {0, 1, 2})
        grid->setColumnStretch(column, 1);
    m_diff = new PicturePane;
    m_diff->setObjectName("diff");
    for (std::size_t side = 0; side < m_sides.size(); ++side) {
        const int column = static_cast<int>(side);
        auto* const pane = new PicturePane;
        pane->setObjectName(side == 0 ? "before" : "after");
        m_sides[side] = pane;
        grid->addWidget(new QLabel(own("Version %1").arg(m_versions[side])), 0, column, Qt::AlignHCenter);
        grid->addWidget(pane, 1, column);
        auto* const maker = new PictureMaker(m_host, this);
        maker->shown = [this, pane](const QImage& picture) {
            pane->show(picture);
            showDiff();
        };
        maker->told = [pane](const QString& sentence) { pane->tell(sentence); };
        maker->ask(place, m_versions[side]);
    }
    auto* const legend = new QLabel(own("Only before: red. Only after: green. Otherwise: amber."));
    legend->setWordWrap(true);
    legend->setAlignment(Qt::AlignHCenter);
    grid->addWidget(legend, 0, 2);
    grid->addWidget(m_diff, 1, 2);
    return pictures;
}

QWidget* CompareDialog::makeList(const Place& place)
{
    auto* const list = new QTreeWidget;
    list->setObjectName("differences");
    list->setAccessibleName(own("Differences"));
    list->setRootIsDecorated(false);
    list->setHeaderLabels(
        {own("What"), own("Name"), own("Version %1").arg(m_versions[0]), own("Version %1").arg(m_versions[1])});
    m_list = list;
    for (const Difference& one : differencesOf(*m_host.tasks.opened, place.fileId, m_versions[0], m_versions[1]))
        addRow(one);
    if (list->topLevelItemCount() == 0)
        new QTreeWidgetItem(list, {own("The versions are the same.")});
    else
        askForMeasures(place);
    for (int column = 0; column < list->columnCount(); ++column)
        list->resizeColumnToContents(column);
    giveTitlesRoom(*list);
    return list;
}

QTreeWidgetItem* CompareDialog::addRow(const Difference& one)
{
    auto* const row = new QTreeWidgetItem(
        m_list, {kindWord(one.kind), nameText(one), sideText(one, one.before), sideText(one, one.after)});
    row->setToolTip(1, shown(one.name));
    return row;
}

void CompareDialog::askForMeasures(const Place& place)
{
    for (std::size_t side = 0; side < m_measures.size(); ++side) {
        auto* const maker = new PictureMaker(m_host, this, PictureMaker::Form::Measures);
        maker->told = [](const QString&) {}; // files that nobody can measure are compared without
        maker->given = [this, side](const std::string& json) {
            m_measures[side] = json;
            inSlot(this, [this] { showMeasures(); });
        };
        maker->ask(place, m_versions[side]);
    }
}

void CompareDialog::showMeasures()
{
    if (!m_measures[0] || !m_measures[1])
        return;
    for (const Difference& one : measureDifferences(*m_measures[0], *m_measures[1]))
        addRow(one);
    for (int column = 0; column < m_list->columnCount(); ++column)
        m_list->resizeColumnToContents(column);
}

void CompareDialog::showDiff()
{
    if (m_sides[0] && m_sides[1] && !m_sides[0]->picture().isNull() && !m_sides[1]->picture().isNull())
        m_diff->show(pictureDiff(m_sides[0]->picture(), m_sides[1]->picture()));
}

} // namespace zn::arkin
