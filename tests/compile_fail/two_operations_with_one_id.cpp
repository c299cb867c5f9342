#include "frame/row.h"

using namespace norvane::frame;

using one = operation<1, 2, "one", request<72>>;
using other = operation<1, 2, "other", request<76, word<"value", 72>>>;

static_assert(row_list<one, other>::distinct(), "two operations with one id");
