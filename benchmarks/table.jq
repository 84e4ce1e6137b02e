# The results of benchmark programs (Google Benchmark's JSON, one document after another) as a
# Markdown table, its columns aligned. comparison.h tells what a row holds.

def rounded: if . >= 100 then round else (. * 10 | round) / 10 end;

def value($unit):
    if $unit == "ns" then
        if . < 1e3 then "\(rounded) ns"
        elif . < 1e6 then "\(. / 1e3 | rounded) µs"
        elif . < 1e9 then "\(. / 1e6 | rounded) ms"
        else "\(. / 1e9 | rounded) s" end
    elif $unit == "B" and . >= 1e6 then "\(. / 1e6 | rounded) MB"
    else "\(rounded) \($unit)" end;

def hundredths: . * 100 | round | "\(. / 100)";

def row:
    (.label | split("|")) as [$unit, $reference, $remark]
    | (if .reference then .ours / .reference else 0 end) as $ratio
    | [
        (.name | split("/iterations")[0]) + (if $remark == "" then "" else " (\($remark))" end),
        (.ours | value($unit)),
        $reference,
        (if .reference then .reference | value($unit) else "" end),
        (if $ratio == 0 then ""
         elif .times_faster > 0 then "\(1 / $ratio | hundredths) times faster"
         else $ratio | hundredths end),
        (if .at_most > 0 then "at most \(.at_most | hundredths) times"
         elif .times_faster > 0 then "\(.times_faster | hundredths) times faster"
         elif .limit > 0 then "at most \(.limit | value($unit))"
         else "" end),
        (if .at_most + .times_faster + .limit == 0 then ""
         elif (.at_most > 0 and $ratio > .at_most)
            or (.times_faster > 0 and 1 / $ratio < .times_faster)
            or (.limit > 0 and .ours > .limit) then "NOT MET" else "met" end)
      ];

[["What", "Ours", "Reference", "Its value", "Ratio", "Target", "Met"]]
+ [inputs.benchmarks[] | row]
| (transpose | map(map(length) | max)) as $widths
| .[0], ($widths | map("-" * .)), .[1:][]
| [., $widths] | transpose | map(.[0] + (" " * (.[1] - (.[0] | length)) // ""))
| "| " + join(" | ") + " |"
