#pragma once

// Kept so that older includes still build; the doubles live in tests/support.
#include "support/FakeTelegramPorts.h"
