#include "core/anonymization/country_names.hpp"
