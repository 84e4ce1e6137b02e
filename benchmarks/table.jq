# The results of one benchmark program (Google Benchmark's JSON) as rows of a table. See
# comparison.h for the counters. A label holds the unit, the reference's name and a remark.

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

.benchmarks[]
| (.label | split("|")) as [$unit, $reference, $remark]
| (.name | split("/iterations")[0]) as $what
| [
    (if .at_most then "at most \(.at_most | hundredths) times" else empty end),
    (if .times_faster then "\(.times_faster | hundredths) times faster" else empty end),
    (if .limit then "at most \(.limit | value($unit))" else empty end)
  ] as $targets
| ((.at_most == null or .ratio <= .at_most)
   and (.times_faster == null or 1 / .ratio >= .times_faster)
   and (.limit == null or .ours <= .limit)) as $met
| [
    $what + (if $remark == "" then "" else " (\($remark))" end),
    (.ours | value($unit)),
    $reference,
    (if .reference then .reference | value($unit) else "" end),
    (if .times_faster then "\(1 / .ratio | hundredths) times faster"
     elif .ratio then .ratio | hundredths
     else "" end),
    ($targets | join(", ")),
    (if $targets == [] then "" elif $met then "met" else "NOT MET" end)
  ]
| @tsv
