#include "frame/row.h"

using namespace norvane::frame;

using wrong = operation<1, 2, "wrong", request<88, text<"name", 72, 16, 17>>>;

constexpr auto length = wrong::request::length;
