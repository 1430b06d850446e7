#pragma once

// Read by the resource compiler too, which knows macros only.

#define CVLOG_TOOLBOX_BITMAP 101
