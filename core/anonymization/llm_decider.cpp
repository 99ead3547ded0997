#include "core/anonymization/llm_decider.hpp"
