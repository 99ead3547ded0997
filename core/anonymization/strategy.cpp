#include "core/anonymization/strategy.hpp"
