// grammar.js FILE...: each line of the files is a query text, each file named *.sql a script of statements. Every one
// must be Transact-SQL by a grammar that is not ours. Fails with the text and the place where the grammar stopped.
const fs = require('fs');
const { Parser } = require('node-sql-parser');

const parser = new Parser();
let accepted = 0;
let refused = 0;

function hold(text, where) {
  try {
    parser.astify(text, { database: 'transactsql' });
    accepted += 1;
  } catch (problem) {
    refused += 1;
    const at = problem.location ? ` at character ${problem.location.start.offset + 1}` : '';
    console.error(`${where}: no Transact-SQL${at}: ${text}\n    ${problem.message.split('\n')[0].slice(0, 300)}`);
  }
}

for (const file of process.argv.slice(2)) {
  const content = fs.readFileSync(file, 'utf8');
  const texts = file.endsWith('.sql') ? content.split(';\n') : content.split('\n');
  texts.forEach((text, index) => {
    if (text.trim()) hold(text, `${file}:${index + 1}`);
  });
}
console.log(`${accepted} texts are Transact-SQL, ${refused} are not`);
process.exit(refused === 0 && accepted > 0 ? 0 : 1);
