# Sourced by ./bench: reading and writing the text of a store, without a window and without a disk.

"$out/native-release/benchmarks/store_benchmark" --benchmark_format=csv --benchmark_repetitions=9 \
  --benchmark_min_time=0.1 --benchmark_enable_random_interleaving=true 2>/dev/null |
  awk -F, '/^"(read|write)\/[0-9]+"/ { gsub(/"/, "", $1); if (!($1 in best) || $4 < best[$1]) best[$1] = $4 }
    END { for (name in best) print name, best[name] }' | sort -t / -k 2n |
  while read -r name milliseconds; do
    count=${name#*/}
    limit_row "${name%/*} a store of $count messages" "$milliseconds" ms "$([ "$count" = 1000 ] && echo 1 || echo 80)"
  done
