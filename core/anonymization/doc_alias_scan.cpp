#include "core/anonymization/doc_alias_scan.hpp"
