#include "core/anonymization/constants.hpp"
