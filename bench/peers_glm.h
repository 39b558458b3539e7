// glm for the benchmarks, with its experimental extensions enabled.
#ifndef ZAN_BENCH_PEERS_GLM_H
#define ZAN_BENCH_PEERS_GLM_H

#define GLM_ENABLE_EXPERIMENTAL
#include <glm/ext.hpp>
#include <glm/glm.hpp>
#include <glm/gtx/euler_angles.hpp>
#include <glm/gtx/matrix_decompose.hpp>
#include <glm/gtx/quaternion.hpp>

#endif  // ZAN_BENCH_PEERS_GLM_H
