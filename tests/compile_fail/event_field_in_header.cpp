#include "frame/row.h"

using namespace norvane::frame;

using wrong = notification<1, 2, "wrong", event<octet<"value", 71>>>;

constexpr wrong::event made{};
