// The upper pane of the terminal.
#pragma once

#include <QGroupBox>

#include <memory>
#include <string>

namespace Ui
{
class frmReceive;
}

namespace harvelop
{

// Shows everything the logger says.
class frmReceive : public QGroupBox
{
    Q_OBJECT

public:
    explicit frmReceive(QWidget* parent = nullptr);
    ~frmReceive() override;

    void Append(const std::string& text);
    void Clear();

signals:
    void ClearAsked(); // Alt+C, or by the menu

private:
    std::unique_ptr<Ui::frmReceive> m_ui;
};

} // namespace harvelop
