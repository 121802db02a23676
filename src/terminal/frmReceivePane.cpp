#include "terminal/frmReceivePane.h"

#include <QMimeData>
#include <QTextBlock>

#include <algorithm>
#include <memory>

namespace harvelop
{

QString ReceivePane::Text(int from, int to) const
{
    QString text;
    for (QTextBlock row = document()->findBlock(from); row.isValid() && row.position() <= to; row = row.next()) {
        const int begin = std::max(from - row.position(), 0);
        if (row.position() > from && row.userState() != GoesOn)
            text += '\n';
        text += row.text().mid(begin, to - row.position() - begin);
    }
    return text;
}

QString ReceivePane::Text() const
{
    return Text(0, document()->characterCount());
}

QMimeData* ReceivePane::createMimeDataFromSelection() const
{
    const QTextCursor selection = textCursor();
    auto copied = std::make_unique<QMimeData>();
    copied->setText(Text(selection.selectionStart(), selection.selectionEnd()));
    return copied.release();
}

} // namespace harvelop
