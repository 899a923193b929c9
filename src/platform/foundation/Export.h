#pragma once

// Marks what the shared library shows to its users. Everything else is hidden.
#define TESSALINE_EXPORT __attribute__((visibility("default")))
