// SPDX-License-Identifier: MIT
namespace lumenvale {
} // namespace lumenvale
