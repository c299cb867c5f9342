#include "frame/row.h"

using namespace norvane::frame;

using wrong = operation<1, 2, "wrong", request<80, word<"value", 72>, word<"cut", 78>>>;

constexpr auto length = wrong::request::length;
