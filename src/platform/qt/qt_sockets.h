// TCP sockets on Qt.
#pragma once

#include "platform/socket_control.h"

#include <memory>

namespace harvelop
{

class QtSockets : public SocketMaker
{
public:
    std::unique_ptr<SocketControl> MakeSocket() override;
};

} // namespace harvelop
