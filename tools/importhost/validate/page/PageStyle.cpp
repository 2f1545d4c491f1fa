#include "importhost/validate/page/PageStyle.h"

namespace importhost::validate {

std::string_view pageStyle() {
    return R"(
:root { --paper: #f6f7f9; --card: #fff; --ink: #1d2330; --faint: #5d6678; --line: #dfe3ea; --code: #f0f2f6;
  --good: #12743c; --good-soft: #e2f4e8; --bad: #b3261e; --bad-soft: #fde8e6; --warn: #8a5a00; --warn-soft: #fdf1d6;
  --skip: #56607a; --skip-soft: #e9ecf3; --link: #1a56b0; --wave: #3f6fb5; }
@media (prefers-color-scheme: dark) {
  :root { --paper: #14171d; --card: #1c2028; --ink: #e6e9ef; --faint: #9aa4b6; --line: #313846; --code: #12151a;
    --good: #6fd193; --good-soft: #16311f; --bad: #ff9a91; --bad-soft: #431c1a; --warn: #f0c060; --warn-soft: #3a2c0d;
    --skip: #aab4c8; --skip-soft: #2a303d; --link: #8db8ff; --wave: #7aa7ea; } }
* { box-sizing: border-box; }
body { margin: 0; background: var(--paper); color: var(--ink); font: 16px/1.5 system-ui, sans-serif; }
main { max-width: 70rem; margin: 0 auto; padding: 1.25rem 1rem 4rem; }
a { color: var(--link); }
header { padding: 1.25rem 1.5rem; border-radius: 10px; border-left: 8px solid; }
header.good { background: var(--good-soft); border-color: var(--good); }
header.bad { background: var(--bad-soft); border-color: var(--bad); }
.kicker { margin: 0; color: var(--faint); font-size: .85rem; letter-spacing: .04em; }
h1 { margin: .1rem 0 .6rem; font-size: 1.8rem; line-height: 1.2; text-wrap: balance; }
h2 { margin: 2.2rem 0 .7rem; font-size: 1.25rem; }
summary b { overflow-wrap: anywhere; }
h5 { margin: .9rem 0 .2rem; font-size: .85rem; color: var(--faint); font-weight: 600; }
.chips { margin: 0 0 .6rem; display: flex; flex-wrap: wrap; gap: .4rem; }
.chip, .badge { border-radius: 99px; font-weight: 600; white-space: nowrap; }
.chip { padding: .15rem .8rem; font-size: .95rem; }
.badge { flex: none; padding: .05rem .6rem; font-size: .78rem; min-width: 4.2rem; text-align: center; }
.pass { color: var(--good); background: var(--good-soft); }
.bad.chip, .bad.badge { color: var(--bad); background: var(--bad-soft); }
.warn { color: var(--warn); background: var(--warn-soft); }
.skip { color: var(--skip); background: var(--skip-soft); }
header .chip, header .badge { background: var(--card) !important; }
.path, code, pre { font-family: ui-monospace, "Cascadia Mono", Consolas, Menlo, monospace; font-size: .86rem; }
.path { margin: 0; color: var(--faint); overflow-wrap: anywhere; }
.plain { list-style: none; margin: 0; padding: 0; }
header .plain { margin-top: .8rem; }
header .plain li { display: flex; flex-wrap: wrap; align-items: baseline; gap: .2rem .6rem; padding: .15rem 0; }
.facts { display: grid; grid-template-columns: minmax(6.5rem, max-content) minmax(0, 1fr); gap: .15rem 1.2rem;
  margin: 0; font-size: .93rem; }
.facts dt { color: var(--faint); }
.facts dd { margin: 0; overflow-wrap: anywhere; }
pre { margin: .5rem 0; padding: .6rem .8rem; border: 1px solid var(--line); border-radius: 6px; background: var(--code);
  white-space: pre-wrap; overflow-wrap: anywhere; line-height: 1.45; }
dd pre { margin: 0; }
.card > :last-child:not(summary) { margin-bottom: .8rem; }
.more { margin-top: .6rem; }
.more > summary { color: var(--faint); font-size: .9rem; }
.problem p { margin: 0 0 .2rem; }
.card { margin: 0 0 .8rem; padding: .5rem 1.25rem; border: 1px solid var(--line); border-radius: 10px;
  background: var(--card); break-inside: avoid; }
.sheet { overflow-x: auto; margin: 0 0 1rem; border-radius: 6px; background: #181a1e; }
.sheet img { display: block; width: 100%; min-width: 36rem; height: auto; }
figure { margin: 0 0 1rem; }
figcaption { color: var(--faint); font-size: .85rem; margin-bottom: .3rem; }
.lanes { display: grid; grid-template-columns: max-content minmax(0, 1fr) max-content; gap: .25rem .7rem;
  align-items: center; font-size: .8rem; }
.lanes .name, .lanes .peak { color: var(--faint); }
.lanes .peak { text-align: right; font-variant-numeric: tabular-nums; }
.lanes svg { display: block; width: 100%; height: 2.6rem; border-radius: 4px; background: var(--code); }
.lanes path { fill: var(--wave); stroke: var(--wave); stroke-width: 1px; vector-effect: non-scaling-stroke; }
.problem { margin: 0 0 .8rem; padding: .5rem .8rem; border-radius: 6px; color: var(--bad); background: var(--bad-soft);
  overflow-wrap: anywhere; }
.description { margin: .2rem 0 .6rem; max-width: 48rem; color: var(--faint); font-size: .93rem; }
summary { display: flex; flex-wrap: wrap; align-items: baseline; gap: .2rem .7rem; cursor: pointer; padding: .4rem 0;
  list-style: none; }
summary::-webkit-details-marker { display: none; }
summary::before { content: "\25B8"; flex: none; width: .8rem; color: var(--faint); }
details[open] > summary::before { content: "\25BE"; }
.group { margin: 0 0 .6rem; padding: .25rem 1rem; border: 1px solid var(--line); border-radius: 10px;
  background: var(--card); }
.group > summary b { text-transform: capitalize; }
.check { border-top: 1px solid var(--line); padding-left: 1.1rem; }
.check > :not(summary) { margin-left: 1.5rem; }
.check > :last-child:not(summary) { margin-bottom: 1rem; }
.reason { color: var(--faint); font-size: .9rem; overflow-wrap: anywhere; }
.time { margin-left: auto; color: var(--faint); font-size: .85rem; font-variant-numeric: tabular-nums; }
.failures, .warnings, .notes { padding-left: 1.1rem; margin-top: .3rem; margin-bottom: .5rem; font-size: .93rem;
  overflow-wrap: anywhere; }
.failures li, .warnings li, .notes li { white-space: pre-line; }
.failures li::marker, .failures { color: var(--bad); }
.warnings li::marker, .warnings { color: var(--warn); }
@media (max-width: 40rem) {
  main { padding: .75rem .6rem 3rem; }
  header { padding: 1rem; }
  h1 { font-size: 1.4rem; }
  .facts { grid-template-columns: 1fr; gap: 0; }
  .facts dt:not(:empty) { margin-top: .4rem; font-size: .85rem; }
  .card { padding: .3rem .8rem; }
  .group { padding: .25rem .6rem; }
  .check { padding-left: 0; }
  .check > :not(summary) { margin-left: .3rem; } }
@media print {
  :root { --paper: #fff; --card: #fff; --ink: #000; --faint: #444; --line: #bbb; --code: #fff; --good: #12743c;
    --good-soft: #fff; --bad: #b3261e; --bad-soft: #fff; --warn: #8a5a00; --warn-soft: #fff; --skip: #444;
    --skip-soft: #fff; --wave: #333; }
  body { font-size: 10pt; }
  main { max-width: none; padding: 0; }
  .sheet img { min-width: 0; }
  .check, summary { break-inside: avoid; } }
@media print { details.group::details-content { display: block; content-visibility: visible; } }
)";
}

}  // namespace importhost::validate
