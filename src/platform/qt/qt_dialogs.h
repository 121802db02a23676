// Message boxes, questions and choosers as windows.
#pragma once

#include "platform/dialogs.h"

namespace harvelop
{

// Boxes belong to the active window and stand above every other of the program's, also one that stays on top. If the
// window that a box belongs to goes away, or the program ends, the box counts as closed without a choice.
class QtDialogs : public Dialogs
{
public:
    BoxAnswer Show(const Box& box) override;
    std::string AskPassword(const std::string& text, const std::string& title) override;
    std::string BrowseFolder(const std::string& title, const std::string& startIn) override;
    std::string OpenFile(const std::string& title, const std::string& startIn, const std::string& extension) override;
};

} // namespace harvelop
