#pragma once

// Marks what the module's shared library lets its users see; everything else in it is hidden.
#define RSVP_LER_EXPORT __attribute__((visibility("default")))
