// The receive pane as a screen reader sees it: a text that can't be changed, of what is in view.
#pragma once

namespace harvelop
{

class ReceivePane;

void MakeReceivePaneAccessible(); // all of them; once or more often

// What is in view may have changed.
void TellReceivePaneChanged(ReceivePane& pane);

} // namespace harvelop
