#include "frame/row.h"

using namespace norvane::frame;

using wrong = operation<1, 2, "wrong", request<96, text<"name", 72, 16>, word<"value", 84>>>;

constexpr auto length = wrong::request::length;
