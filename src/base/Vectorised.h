// Loops over samples are built for several instruction sets, and the best one is chosen when the
// program is loaded. The results are equal on all: no fused operations, no reordered sums.
#pragma once

#if defined(QUORIL_NO_CLONES)
#define QUORIL_VECTORISED
#else
#define QUORIL_VECTORISED __attribute__((target_clones("arch=x86-64-v4", "avx2", "default")))
#endif
