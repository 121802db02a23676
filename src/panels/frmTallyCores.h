// The panel of one logger: shows and edits what the logger is and what is done with its data.
#pragma once

#include "identify/panel_steps.h"
#include "panels/panel_rules.h"

#include <QDialog>
#include <QPointer>

#include <memory>
#include <vector>

class QLabel;
class QLineEdit;

namespace Ui
{
class frmTallyCores;
}

namespace harvelop
{

class ScheduleGrid;

// Each logger that is being worked on has its own instance, hidden until it is viewed. The handlers go by the tag,
// never by `CurrentLogger`, as several panels can be open at a time; what they start goes by the shared state, which
// they set first.
class frmTallyCores : public QDialog, public LoggerPanel
{
    Q_OBJECT

public:
    explicit frmTallyCores(const PanelServices& services);
    ~frmTallyCores() override;

    int Tag() const { return m_tag; } // the logger's number; 0 before Load
    void SelectTab(int tab);          // from 1

    void Load() override;
    PanelValues Values() const override;
    void SetUp(const PanelSetUp& setUp) override;
    void SetCaption(const std::string& caption) override;
    void SetSerial(const std::string& serial) override;
    void Place(int twips) override;
    void SetVisible(bool visible) override;
    bool IsVisible() const override { return isVisible(); }
    void DescribeModel(const std::string& model) override;
    void SetControlEnabled(std::string_view control, bool enabled) override;
    void SetPanelEnabled(bool enabled) override { setEnabled(enabled); }
    void SetDelivery(std::optional<bool> emailEnabled, std::optional<bool> ftpEnabled) override;
    void Unload() override;
    void Replaced() override;

    void reject() override; // Esc

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void connectControls();
    void connectButtons();
    void connectToLogger();
    void cmdCreateIcon_Click();
    void cmdEditDiskList_Click();
    void cmdEditEmailList_Click();
    void cmdEditMDB_Click();
    void editRun(const char* kind);
    void cmdTallyCoresUnload_Click();
    void cmdOk_Click();
    void cmdApply_Click();
    void tsTallycores_Click(int index);
    void chkMdb_Click();
    void txtKR400_Change(QLineEdit* box);
    void txtDescription_Change();
    void StripDescription();
    void ApplyPanelLanguage();

    void showLoaded(const PanelValues& values, const LoggerRecord& record);
    void showTexts(const LoggerRecord& record);
    void showStoredData(std::string_view letters);
    void showPicture(int item);
    QLabel& label(std::string_view name) const;
    void showDelivery(bool emailEnabled, bool ftpEnabled);
    void changeGrid(const std::function<void(PanelValues&, int rows)>& rule);
    void settle();
    void enableApply(bool enabled);
    static void enable(QWidget& control, bool enabled, const char* whyNot);
    void enableMdb(bool enabled);
    static constexpr const char* NotAvailable = "Not available yet.";
    static constexpr const char* OnlyWithMdb = "Check Save to .mdb first.";
    void caption(QWidget& control, int number, const std::string& suffix = {});
    LoggerRecord* record() const { return m_use.tables.Record(m_tag); }
    bool isKR4() const;

    PanelServices m_use;
    std::unique_ptr<Ui::frmTallyCores> m_ui;
    ScheduleGrid* m_gridKR400;
    ScheduleGrid* m_gridKR200;
    ScheduleGrid* m_grid; // that of the model as it was loaded: one that nobody knows changes to "Unknown" afterwards
    int m_tag = 0;
    bool m_escCancels = false; // not on a panel made during a search or while adding
    bool m_closed = false;
};

// Makes the panels for the program while it lives, and deletes those that are left at its end.
class TallyCorePanels
{
public:
    explicit TallyCorePanels(const PanelServices& services);
    ~TallyCorePanels();
    TallyCorePanels(const TallyCorePanels&) = delete;
    TallyCorePanels& operator=(const TallyCorePanels&) = delete;

private:
    LoggerPanel* make();

    PanelServices m_services;
    std::vector<QPointer<frmTallyCores>> m_made;
};

} // namespace harvelop
