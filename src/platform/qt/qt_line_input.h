// Lines from a file descriptor, on Qt's event loop.
#pragma once

#include "platform/line_input.h"

#include <QSocketNotifier>

#include <string>

namespace harvelop
{

// Reads no further while whole lines wait to be taken, and nothing at all before the first call of NextLine, so that a
// question may be answered on the same terminal before.
class QtLineInput : public LineInput
{
public:
    static constexpr std::size_t LongestLine = 65536; // bytes; what is longer is cut into such lines

    explicit QtLineInput(int descriptor);

    std::optional<std::string> NextLine() override;
    bool AtEnd() const override { return m_ended && m_text.empty(); }

private:
    void read();

    int m_descriptor;
    bool m_ended = false; // the descriptor has no more to give
    std::string m_text;   // read and not taken yet
    QSocketNotifier m_notifier;
};

} // namespace harvelop
