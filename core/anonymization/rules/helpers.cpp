#include "core/anonymization/rules/helpers.hpp"
