#include "core/anonymization/party_labeled_names.hpp"
