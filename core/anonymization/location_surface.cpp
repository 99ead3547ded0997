#include "core/anonymization/location_surface.hpp"
