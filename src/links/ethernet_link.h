// The network link, as far as the exchange needs it.
#pragma once

#include <string>

namespace harvelop
{

class EthernetLink
{
public:
    virtual ~EthernetLink() = default;
    virtual void EthernetSend(const std::string& text) = 0; // one line; CR LF is added. Nothing happens without a link
    virtual void CloseEthernet() = 0;
};

} // namespace harvelop
