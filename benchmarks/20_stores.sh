# Sourced by ./bench: reading and writing a store, without a window. In memory, so that it is not the disk that
# is measured, and on the disk.

store_rows() { # FOLDER FILTER CLOCK PLACE
  BENCH_FOLDER=$1 "$out/native-release/benchmarks/store_benchmark" --benchmark_format=json \
    --benchmark_filter="$2" --benchmark_min_time=0.5 --benchmark_repetitions=9 \
    --benchmark_enable_random_interleaving=true 2>/dev/null |
    python3 -c '
import json, sys
clock, place = sys.argv[1:]
best = {}
for run in json.load(sys.stdin)["benchmarks"]:
    if run["run_type"] == "iteration":
        speed = run["size"] / run[clock] * 1000
        best[run["name"]] = max(best.get(run["name"], 0), speed)
for count in (1000, 100000):
    for work, name in (("readStore", "read"), ("writeStore", "write")):
        for least, least_name in (("findLineEnds", "read and find line ends"), ("writePlainly", "one plain write")):
            value, reference = (best.get(f"{of}/{count}") for of in (work, least))
            if value and reference and (work, least) != ("readStore", "writePlainly"):
                print("%-46s %10.1f %-5s %-34s %10.1f %-5s %6.2f x" % (
                    f"{name} a store of {count:,}, {place}", value, "MB/s", least_name, reference, "MB/s", value / reference))
' "$3" "$4"
}

memory=$(mktemp -d -p /dev/shm)
store_rows "$memory" . cpu_time 'in memory'
rm -rf "$memory"
store_rows "$work" '(write.*)' real_time 'on the disk'
