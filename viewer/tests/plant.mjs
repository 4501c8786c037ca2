// A plant of any size: parts as boxes side by side, welds on their flanges, stations with operations.

/** Numbers from 0 to 1 that are the same in each run. */
function makeRandom(seed) {
  let state = seed;
  return () => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return state / 2 ** 32;
  };
}

const COLOURS = ["#9aa5b1", "#c8553d", "#588b8b", "#e0a458", "#6c8ebf", "#8a7aa8", "#7f9c5f", "#b0788a"];
const pad = (number) => String(number).padStart(3, "0");

function makeParts(count, random) {
  const along = Math.ceil(Math.sqrt(count * 1.8));
  return Array.from({ length: count }, (_value, at) => {
    const x = (at % along) * (3600 / along);
    const y = -750 + Math.floor(at / along) * (1500 / Math.ceil(count / along));
    const z = 280 + Math.sin(at * 1.3) * 60 + Math.abs(y) * 0.12;
    const size = [3600 / along * 1.12, 1500 / Math.ceil(count / along) * 1.1, 30 + random() * 160];
    return {
      kind: "part", id: `P${pad(at + 1)}`, name: `Panel ${at + 1}`, number: `UB-${100 + at}`, activities: [],
      color: COLOURS[at % COLOURS.length], shown: true, box: [[x, y, z], size.map((length, i) => [x, y, z][i] + length)],
    };
  });
}

function makeActivities(welds) {
  const activities = [{ id: "UB", name: "Underbody", kind: "other", parent: null, welds: 0 }];
  const stations = Math.max(3, Math.min(12, Math.round(welds / 60)));
  for (let station = 1; station <= stations; ++station) {
    activities.push({ id: `ST${station}0`, name: `Station ${station}`, kind: "station", parent: "UB", welds: 0 });
    for (const [step, name] of [[1, "Tack"], [2, "Respot"]]) {
      activities.push({ id: `OP${station}${step}0`, name, kind: "operation", parent: `ST${station}0`, welds: 0 });
    }
  }
  return activities;
}

function placeOf(part, random) {
  const [[x0, y0, z0], [x1, y1, z1]] = part.box;
  const share = random();
  const round = (value) => Math.round(value * 10) / 10;
  const edge = random() < 0.5 ? [x0 + (x1 - x0) * share, y1, z1] : [x1, y0 + (y1 - y0) * share, z1];
  return edge.map(round).concat(round(z0)).slice(0, 3);
}

function makeWeld(at, { parts, operations, random }) {
  const seam = at % 14 === 13;
  const part = Math.floor(random() * parts.length);
  const joined = [parts[part], parts[(part + 1) % parts.length]];
  const chance = random();
  const first = operations[Math.floor(random() * operations.length)];
  const second = operations[(operations.indexOf(first) + 1) % operations.length];
  const activities = chance < 0.2 ? [] : chance < 0.26 ? [first.id, second.id] : [first.id];
  for (const id of activities) for (const { activities: own } of joined) if (!own.includes(id)) own.push(id);
  return {
    kind: "weld", type: seam ? "seam" : at % 23 === 22 ? "locating" : "spot",
    id: `${seam ? "SM" : "SW"}-${pad(at + 1)}`, name: `${seam ? "SM" : "SW"}-${pad(at + 1)}`,
    position: placeOf(joined[0], random), diameter: seam ? null : 6, parts: joined.map(({ id }) => id),
    processType: seam ? "MAG" : "RSW", activities, assigned: activities.length > 0,
    status: ["unassigned", "assigned", "several"][activities.length], shown: true,
  };
}

/** The nodes and the process of a scene, without shapes. */
export function makePlant(weldCount, partCount) {
  const random = makeRandom(weldCount);
  const parts = makeParts(partCount, random);
  const activities = makeActivities(weldCount);
  const operations = activities.filter(({ kind }) => kind === "operation");
  const welds = Array.from({ length: weldCount }, (_value, at) => makeWeld(at, { parts, operations, random }));
  const labels = welds.filter((_weld, at) => at % 9 === 0).map(({ id, position, activities: [activity] }) => (
    { kind: "label", text: activity ? `${id} @ ${activity}` : id, weld: id, activity: activity ?? null, position }));
  return { extras: { document: "underbody.json", program: "biwplan 0.1.0", activities }, parts, welds, labels };
}
