#include "core/anonymization/rules/org_context.hpp"
