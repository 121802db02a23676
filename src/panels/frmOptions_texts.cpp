// The captions of the panel in the user's language, the About page and the tool tips.
#include "panels/frmOptions.h"
#include "panels/frmSupport.h"
#include "ui_frmOptions.h"

#include <QRegularExpression>

namespace harvelop
{

namespace
{

struct NumberedCaption {
    const char* control;
    int number;
};

constexpr NumberedCaption Captions[] = {
    {"cmdOk", 98},
    {"cmdCancel", 99},
    {"cmdApply", 100},
    {"fraSearch", 175},
    {"cmdUnload_FindTallycores", 176},
    {"chkUnload_FindPorts", 177},
    {"fraAdd", 178},
    {"cmdUnload_Add", 179},
    {"lblAdd", 180},
    {"fraCurrent", 181},
    {"cmdUnload_Delete", 182},
    {"cmdUnload_View", 183},
    {"cmdUnload_Unload", 184},
    {"cmdTerminal", 185},
    {"lblSMTPServerName", 186},
    {"chkSMTPServerRequiresAuthentication", 187},
    {"fraAuthenticationType", 188},
    {"optSMTPPLAIN", 189},
    {"optSMTPLOGIN", 190},
    {"optSMTPCRMMD5", 191},
    {"cmdSMTPTestLogin", 192},
    {"lblSMTPSender", 193},
    {"lblSMTPAccountName", 194},
    {"lblPassword", 195},
    {"lblSMTPSiteID", 196},
    {"lblFTPServerName", 197},
    {"lblFTPUserName", 198},
    {"lblFTPPassword", 199},
    {"lblFTPSiteID", 200},
    {"lblSiteID", 201},
    {"cmdFTPTestLogin", 202},
    {"chkShowHarvelOnStartup", 203},
    {"chkRunHarvelOnStartup", 204},
    {"chkUnloadAll", 205},
    {"chkShowDir", 206},
    {"chkSaveToDesktop", 207},
    {"chkSaveToOneFile", 208},
    {"chkExitAfterUnload", 210},
    {"chkShowMessages", 211},
    {"chkLockControls", 212},
};
constexpr NumberedCaption PortCaption = {"lblSMTPPort", 223};

// That the version told in another language stays behind is meant.
const LangPieces VersionPieces = {{1000, "tallyCore Harvel 2.18 ("}, {213, " 07/06/04)"}};
const LangPieces DescriptionPieces = {{214, "\n\n"}, {215, "\n\n"}, {216, "\n\n"},
                                      {217, "\n\n"}, {218, "\n\n"}, {219, ""}};
const LangPieces CreditsPieces = {{220, " the README that comes with this program.\n\n"},
                                  {221, " the person who installed this program "},
                                  {222, ""}};

std::string joined(const LanguageTables& language, const LangPieces& pieces)
{
    std::string text;
    for (const auto& [number, suffix] : pieces)
        text += language.Text(number) + suffix;
    return text;
}

} // namespace

std::string frmOptions::boxTitle() const
{
    return " " + m_use.use.language.Text(503);
}

void frmOptions::tsOptions_Click()
{
    constexpr int HelpBase = 1099;
    const int tab = m_ui->tsOptions->currentIndex() + 1;
    m_ui->tsOptions->setProperty("HelpContextID", HelpBase + tab);
    if (tab == m_ui->tsOptions->count() && !m_use.use.language.LangActive)
        fillAbout();
    if (m_ui->cmdOk->isEnabled() && !m_use.state.TerminalOpen)
        m_ui->cmdOk->setFocus();
}

void frmOptions::fillAbout()
{
    m_ui->lblAbout_Description->setText(ToQString(joined(m_use.use.language, DescriptionPieces)));
    m_ui->lblAbout_Credits->setText(ToQString(joined(m_use.use.language, CreditsPieces)));
}

void frmOptions::ApplyOptionsLanguage()
{
    const auto apply = [this](const char* control, const LangPieces& pieces) {
        WidgetCaption caption(*findChild<QWidget*>(control));
        ApplyLangFont(m_use.use.language, caption, pieces);
    };
    for (const auto& row : Captions)
        apply(row.control, {{row.number, ""}});
    apply("lblAbout_Version", VersionPieces);
    apply("lblAbout_Description", DescriptionPieces);
    apply("lblAbout_Credits", CreditsPieces);
    apply(PortCaption.control, {{PortCaption.number, ""}});
}

bool frmOptions::isMissing(std::string_view control) const
{
    return (control == "cmdUnload_Add" && !m_use.ShowAddDialog) ||
           (control == "cmdTerminal" && (!m_use.ShowTerminal || !m_use.ConnectLogger)) ||
           (control == "cmdSMTPTestLogin" && !m_use.TestSMTPLogin) ||
           (control == "cmdFTPTestLogin" && !m_use.TestFTPLogin);
}

void frmOptions::updateToolTip(QWidget& control)
{
    const std::string name = ToText(control.objectName());
    std::string_view tip;
    if (isMissing(name)) {
        tip = "Not available yet.";
    } else if (!control.isEnabled()) {
        const bool working = !m_ui->cmdOk->isEnabled() || isHeldByTest(name);
        const Hindrance hindrance = !isEnabled() ? Hindrance::PanelOpen
                                    : working    ? Hindrance::Working
                                                 : Hindrance::None;
        tip = DisabledReason(name, hindrance, m_use.options.LockControls);
    }
    control.setToolTip(ToQString(tip));
}

void frmOptions::updateToolTips()
{
    static const QRegularExpression usable("^(cmd|smd|chk|opt|txt|cbx)");
    for (QWidget* control : findChildren<QWidget*>(usable))
        updateToolTip(*control);
}

} // namespace harvelop
