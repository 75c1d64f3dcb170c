# Makes the measured table of the records that the benches print (Bench.h); a line "# NAME" goes before those of each
# bench. As text, or in Markdown with -v markdown=1. Ends with 1 when a target is missed.

BEGIN {
    FS = "\t"
    if (markdown) {
        print "| What | Size | Ours | Peer | Limit | Ours / peer | Ours / limit | Growth | Target | |"
        print "|---|--:|--:|--:|--:|--:|--:|--:|--:|---|"
    } else
        line("", "ours", "peer", "limit", "/ peer", "/ limit", "growth", "", "target")
}

/^# / { next_bench = substr($0, 3); flush_bench(); heading(bench = next_bench); next }
NF == 13 { keep(); next }
{ print "not a record: " $0 > "/dev/stderr"; broken = 1 }

END {
    flush_bench()
    printf "\n%d rows, %d targets, %d missed\n", rows, targets, missed
    for (i = 1; i <= missed; ++i)
        print (markdown ? "- " : "MISSED  ") miss[i]
    if (walls)
        print "\n" (markdown ? "\\* " : "* ") "time on the wall; all others are the computing time of the process"
    exit missed > 0 || broken
}

# A bench goes through all sizes in turn; its rows are kept until they can stand by series.
function keep(    series) {
    series = $1 SUBSEP $6 SUBSEP $8
    if (!(series in count))
        names[++series_count] = series
    records[series, ++count[series]] = $0
}

function flush_bench(    s, i, series) {
    for (s = 1; s <= series_count; ++s) {
        series = names[s]
        before_size = 0
        for (i = 1; i <= count[series]; ++i) {
            $0 = records[series, i]
            if (i == 1 && !markdown)
                series_heading()
            row()
            before_size = $2
            before_ours = $5
        }
        delete count[series]
    }
    series_count = 0
    fflush()
}

function row(    what, growth, verdict) {
    ++rows
    walls += $4 == "wall"
    misses = target_text = ""
    growth = before_size && $3 == "ns" ? $5 / before_ours / ($2 / before_size) : ""
    judge($10, ratio($5, $7), "peer", "of the peer (" $6 ")")
    judge($11, ratio($5, $9), "limit", "of the limit (" $8 ")")
    judge($12, growth, "growth", "growth")
    if ($13 > 0)
        judge($13, $5, $3, $3)
    verdict = misses ? "MISSED" : target_text ? "holds" : ""
    what = $1 ($4 == "wall" ? (markdown ? " \\*" : " *") : "")
    if (markdown)
        print "| " what " | " thousands($2) " | " amount($5) " | " named($7, $6) " | " named($9, $8) " | " \
            plain(ratio($5, $7)) " | " plain(ratio($5, $9)) " | " plain(growth) " | " target_text " | " \
            (misses ? "**missed**" : verdict) " |"
    else
        line(thousands($2), amount($5), amount($7), amount($9), shown(ratio($5, $7)), shown(ratio($5, $9)),
             shown(growth), verdict, target_text)
}

function judge(target, value, name, words,    is_missed) {
    if (target <= 0 || value == "")
        return
    ++targets
    is_missed = value > target + 0
    target = sprintf("%.3g", target)
    target_text = target_text (target_text ? ", " : "") name " " target
    if (is_missed) {
        misses = 1
        miss[++missed] = bench ": " $1 ($2 > 0 ? ", " thousands($2) : "") ": " shown(value) " " words \
            ", target " target
    }
}

function heading(name) {
    if (markdown)
        print "| **" name "** | | | | | | | | | |"
    else
        print "\n" toupper(name)
    fflush()
}

function series_heading(    beside) {
    beside = ($6 ? "peer: " $6 : "") ($6 && $8 ? "; " : "") ($8 ? "limit: " $8 : "")
    print $1 ($4 == "wall" ? " *" : "") (beside ? "  (" beside ")" : "")
}

function line(size, ours, peer, limit, to_peer, to_limit, growth, verdict, target) {
    printf "%12s%12s%12s%12s%9s%9s%9s  %-8s%s\n", size, ours, peer, limit, to_peer, to_limit, growth, verdict, target
}

function ratio(ours, beside) { return beside == "" ? "" : ours / beside }
function named(value, name) { return value == "" ? "" : amount(value) ", " name }
function plain(number) { return number == "" ? "" : shown(number) }

function amount(value) {
    if (value == "")
        return "-"
    if ($3 != "ns")
        return significant(value) " " $3
    if (value < 1e3)
        return significant(value) " ns"
    if (value < 1e6)
        return significant(value / 1e3) " us"
    if (value < 1e9)
        return significant(value / 1e6) " ms"
    return significant(value / 1e9) " s"
}

function significant(number) { return sprintf(number < 10 ? "%.2f" : number < 100 ? "%.1f" : "%.0f", number) }
function shown(number) {
    return number == "" ? "-" : sprintf(number < 0.0995 ? "%.3f" : number < 10 ? "%.2f" : "%.0f", number)
}

function thousands(number) {
    number = number > 0 ? sprintf("%d", number) : ""
    while (number ~ /[0-9][0-9][0-9][0-9]/)
        sub(/[0-9][0-9][0-9](,|$)/, ",&", number)
    return number
}
