// usage: node ajv.mjs AJV SCHEMA < LINES: whether each line, a JSON document, follows the schema. Prints what is wrong, one line
// a document; exit status 1 when anything is.
import { createRequire } from "node:module";
import { readFileSync } from "node:fs";

const Ajv = createRequire(import.meta.url)(process.argv[2]).default;
const follows = new Ajv({ strict: true, strictRequired: false, allErrors: false }).compile(
  JSON.parse(readFileSync(process.argv[3], "utf8")),
);
readFileSync(0, "utf8").split("\n").slice(0, -1).forEach((line, number) => {
  if (!follows(JSON.parse(line))) {
    console.log(`${number}: ${JSON.stringify(follows.errors).slice(0, 400)}`);
    process.exitCode = 1;
  }
});
