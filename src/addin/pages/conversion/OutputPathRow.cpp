#include "addin/pages/conversion/OutputPathRow.h"

#include "addin/pages/frame/PageEnvironment.h"
#include "addin/pages/paths/ExampleText.h"
#include "addin/pages/paths/PathTokens.h"
#include "addin/variables/UsedVariables.h"
#include "contracts/host/ArkVault.h"

#include <QLabel>
#include <QToolButton>

namespace zn {

OutputPathRow::OutputPathRow(PageEnvironment& environment, std::shared_ptr<IArkVault> vault, QWidget* place)
    : QObject(place)
    , m_environment(environment)
    , m_vault(std::move(vault))
    , m_place(place)
    , m_box(environment.makeTokenBox())
{
    m_box->mvDDX_Control(place);
    AddPathTokens(environment, *m_box);
    m_variables = ReadVaultVariables(m_vault);
    AddVariableTokens(environment, *m_box, m_variables);
}

OutputPathRow::~OutputPathRow() { m_box->mvRegisterCallback(nullptr); }

void OutputPathRow::attach(QToolButton* menuButton, QLabel* example)
{
    m_example = example;
    connect(menuButton, &QToolButton::clicked, this, [this, menuButton] { m_box->mbShowMenu(menuButton, nullptr); });
    m_box->mvRegisterCallback(this);
}

void OutputPathRow::setFormat(Text label, std::int32_t code)
{
    m_formatLabel = std::move(label);
    m_formatCode = code;
    showExample();
}

void OutputPathRow::showExample()
{
    m_example->setText(BuildExampleText(m_environment, *m_vault, *m_box, m_formatLabel, m_formatCode));
}

void OutputPathRow::OnTokenTextChanged(tokenctrl::TokenBox& box)
{
    m_environment.messages().inSlot(m_place, [&] {
        showExample();
        FoldVaultRoot(box, *m_vault);
    });
}

Text OutputPathRow::usedVariables(TextView secondPath)
{
    CollectUsedVariables(text(), secondPath, m_variables, m_usedVariables);
    return JoinVariableNames(m_usedVariables);
}

} // namespace zn
