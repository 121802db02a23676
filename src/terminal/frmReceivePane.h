// The text box that shows what a logger says.
#pragma once

#include <QPlainTextEdit>

namespace harvelop
{

// Long lines are shown in several rows; what is copied has them whole again.
class ReceivePane : public QPlainTextEdit
{
    Q_OBJECT

public:
    enum RowState { Begins = -1, GoesOn = 1 }; // the user state of a row's block

    using QPlainTextEdit::QPlainTextEdit;

    // The text as it was received, but for the kind of its line ends.
    QString Text(int from, int to) const;
    QString Text() const;

protected:
    QMimeData* createMimeDataFromSelection() const override;
};

} // namespace harvelop
