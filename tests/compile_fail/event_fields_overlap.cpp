#include "frame/row.h"

using namespace norvane::frame;

using wrong = notification<1, 2, "wrong", event<half<"source", 72>, octet<"rest", 73>>>;

constexpr wrong::event made{};
