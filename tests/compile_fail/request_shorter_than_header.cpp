#include "frame/row.h"

using namespace norvane::frame;

using wrong = operation<1, 2, "wrong", request<68>>;

constexpr auto length = wrong::request::length;
