# Sourced by ./bench: the program as a whole, from outside and in one process.

# new_folder NAME: a folder with the shipped program and nothing in its stores.
new_folder() {
  rm -rf "$work/$1"
  mkdir -p "$work/$1"
  cp -R "$shipped"/. "$work/$1"
  rm -f "$work/$1"/pc*.dat
  cp "$root/handset/handset.txt" "$work/$1/handset.txt"
  printf '[port]\r\ncom=0\r\n' > "$work/$1/port.ini"
}

# fill_folder NAME COUNT: so many messages in each of its PC folders, and 1,000 in those of the handset.
fill_folder() {
  python3 - "$work/$1" "$2" <<'PYTHON'
import pathlib, sys
folder, count = pathlib.Path(sys.argv[1]), int(sys.argv[2])
texts = ["%06d " % (i * 38977 % count) + "m" * 153 for i in range(count)]
with open(folder / "handset.txt", "w", encoding="utf-8") as handset:
    for status in ("received", "outgoing"):
        for text in texts[:1000]:
            handset.write(f"[message]\nstore = sim\nstatus = {status}\nnumber = +31600000001\n"
                          f"time = 26030211223304\ntext = {text}\n")
for name, section in (("pcInbox", "PCINBOX"), ("pcSent", "PCSENT"), ("pcDraft", "PCDRAFT")):
    groups = (f"Content = {text} \r\nPhone = +31600000001 \r\nTime = 2026/03/02  11:22:33 \r\nIndex = 0 \r\n"
              for text in texts)
    (folder / f"{name}.dat").write_bytes(f"[{section}] \r\n{''.join(groups)}".encode())
PYTHON
}

in_wine() { wine "$@" </dev/null 2>/dev/null 9>&-; }

start_rows() { # NAME FOLDER ROWS
  local program bare
  { read -r -a program && read -r -a bare; } < <(in_wine "$benchmarks/start_time.exe" "$rounds" "$3" \
    "Z:$work/$2/Quillet.exe" "Z:$benchmarks/bare_window.exe" "Z:$work/$2/Skin/Default/SMS" | tr -d '\r') || die "could not measure: $1"
  row "start to filled list, $1" "${program[0]}" ms 'bare window, as many rows' "${bare[0]}"
  row "memory, $1" "${program[1]}" KB 'bare window, as many rows' "${bare[1]}"
}

start_session screen
new_folder example
start_rows 'example handset' example 26
new_folder full
fill_folder full 1000
start_rows '1,000 messages in each folder' full 1000

new_folder large
fill_folder large 100000
start_rows '100,000 in each PC folder' large 1000

operations() { # ROUNDS FOLDER COUNT NAME
  in_wine "$benchmarks/operations.exe" "$1" "Z:$work/$2" "$3" | tr -d '\r' |
    while IFS='|' read -r name value least reference; do row "$4: $name" "$value" ms "$least" "$reference"; done
}
operations 5 full 1000 1,000
operations 3 large 100000 100,000

# At most what the command works on: the settings, images and stores; a store and the one beside it.
python3 "$root/benchmarks/opened_files.py" "$work/full" wine "$benchmarks/operations.exe" 1 "Z:$work/full" 1000 \
    2>/dev/null 9>&- | while IFS='|' read -r name count; do
  printf '%-46s %10d\n' "files opened: $name" "$count"
done

limit_row 'size of Quillet.exe' "$(awk -v b="$(stat -c %s "$shipped/Quillet.exe")" 'BEGIN { print b / 1024 }')" KB 1024
