#pragma once
// The modes of zk_system_bench, each run by scripts/bench-system under its Wine.

namespace zk::bench {

int Switch(bool busy);
int Busy();
int Finder();
int RoundTrip();
int StartTime();
int Soak();
int Rest();

}  // namespace zk::bench
