#include "core/anonymization/placeholders.hpp"
