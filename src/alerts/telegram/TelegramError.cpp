#include "alerts/telegram/TelegramError.h"

namespace tovrin {

std::string TelegramError::description() const {
    switch (m_kind) {
    case Kind::api:
        return "Telegram turned it away: " + m_detail;
    case Kind::noResponse:
        return "Couldn't reach Telegram. Check your connection and try again.";
    case Kind::unauthorized:
        return "Token rejected — double-check it with @BotFather.";
    case Kind::noChat:
        return "Message your bot once in Telegram, then tap Link chat.";
    case Kind::transport:
    case Kind::decoding:
        break;
    }
    return m_detail;
}

} // namespace tovrin
