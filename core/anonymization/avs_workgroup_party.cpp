#include "core/anonymization/avs_workgroup_party.hpp"
