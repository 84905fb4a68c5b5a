#include "ui/views/Openers.h"

namespace tovrin {

Openers& openers() {
    static Openers instance;
    return instance;
}

} // namespace tovrin
