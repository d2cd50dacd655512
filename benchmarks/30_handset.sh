# Sourced by ./bench: reading a handset of our own making beside another client.
python3 "$root/benchmarks/read_handset.py" "$out/native-release/benchmarks/read_handset" "$rounds"
